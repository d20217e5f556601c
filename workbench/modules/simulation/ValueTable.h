#pragma once

#include <QHash>
#include <QtGlobal>

#include <functional>
#include <optional>

class Command;

/// The numbers of the requests by which a module's values are read.
namespace ReadCommand
{

constexpr int AxisParameter = 6;
constexpr int GlobalParameter = 10;
constexpr int InputOutput = 15;
constexpr int Register = 148;
constexpr int RegisterOfChannel1 = 149;

} // namespace ReadCommand

/**
 * All values that a module answers with, found by command number, motor or bank, and type.
 *
 * Owned by its module and read by the module's channel. GUI thread.
 */
class ValueTable
{
public:
    using Reader = std::function<qint32()>;

    /// The numbers are those of a request, 0 to 255 each; a value that is already there is replaced.
    void add(int command, int motorBank, int type, const Reader &reader);

    /// The value that \a request asks for; nothing when there is no such value. Its address is ignored.
    std::optional<qint32> read(const Command &request) const;

private:
    QHash<quint32, Reader> m_readers;
};
