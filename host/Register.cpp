#include "host/Register.h"

#include <utility>

Register::Register(int offset, int width, QString title, QString description, Kind kind, QObject *parent)
    : QObject(parent)
    , m_offset(offset)
    , m_width(width)
    , m_title(std::move(title))
    , m_description(std::move(description))
    , m_kind(kind)
{
}

Register::~Register() = default;

int Register::getOffset() const
{
    return m_offset;
}

int Register::getWidth() const
{
    return m_width;
}

QString Register::getTitle() const
{
    return m_title;
}

QString Register::getDescription() const
{
    return m_description;
}

Register::Kind Register::kind() const
{
    return m_kind;
}
