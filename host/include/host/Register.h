#pragma once

#include "host/HostExport.h"

#include <QObject>
#include <QString>

/**
 * The description of a module's register, or of one bit field (fraction) of a RegisterSet.
 *
 * Owned by its module, or by its RegisterSet. GUI thread.
 */
class HOST_EXPORT Register : public QObject
{
    Q_OBJECT

public:
    /// The kinds of registers; the numbers are those of TempTools::fillCurrentRegisterList().
    enum Kind
    {
        Readable = 1,
        Writable = 2,
        ReadableAndWritable = 3
    };

    /**
     * \param offset the address for a register of its own (0 to 255), the bit offset for a fraction (0 to 31 bit)
     * \param width  1 to 32 bit
     */
    Register(int offset, int width, QString title, QString description, Kind kind = Readable,
             QObject *parent = nullptr);
    ~Register() override;

    int getOffset() const; ///< Address of a register, bit offset (bit) of a fraction.
    int getWidth() const;  ///< Width, bit.
    QString getTitle() const;
    QString getDescription() const;
    Kind kind() const;

private:
    const int m_offset;
    const int m_width;
    const QString m_title;
    const QString m_description;
    const Kind m_kind;
};
