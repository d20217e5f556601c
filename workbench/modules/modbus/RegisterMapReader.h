#pragma once

#include "modules/modbus/RegisterMap.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

/// A register map, or one line that names file and place and what is expected there; \c error is empty when there is
/// none.
struct RegisterMapResult
{
    RegisterMap map;
    QString error;
};

/// Reads a register map from JSON text; \a fileName is how errors call it.
RegisterMapResult readRegisterMap(const QByteArray &json, const QString &fileName);

/// Reads the register map at \a path: a regular file of up to 1 MiB.
RegisterMapResult readRegisterMapFile(const QString &path);

/// The words of the format, which docs/register-map.schema.json repeats.
namespace RegisterMapFormat
{

constexpr qint64 maximumFileBytes = 1024 * 1024;
constexpr int maximumNameCharacters = 60;

QStringList mapFields();
QStringList valueFields();
QStringList bitFieldFields();
QStringList tables();
QStringList types();
QStringList byteOrders(); ///< of bytes in a register, and of words in a number
QStringList groups();

} // namespace RegisterMapFormat
