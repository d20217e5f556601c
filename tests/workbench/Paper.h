#pragma once

#include "application/Terminal.h"

#include <QFile>

/// A terminal whose lines can be read.
class Paper
{
public:
    Paper() = default;
    ~Paper()
    {
        std::fclose(m_output);
        std::fclose(m_errors);
    }
    Q_DISABLE_COPY(Paper)

    QString output() const
    {
        return textOf(m_output);
    }

    QString errors() const
    {
        return textOf(m_errors);
    }

private:
    static QString textOf(std::FILE *file)
    {
        std::rewind(file);
        QFile reader;
        return reader.open(file, QIODevice::ReadOnly) ? QString::fromLocal8Bit(reader.readAll()) : QString();
    }

    std::FILE *const m_output = std::tmpfile();
    std::FILE *const m_errors = std::tmpfile();

public:
    const Terminal terminal{m_output, m_errors};
};
