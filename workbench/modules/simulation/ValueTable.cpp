#include "modules/simulation/ValueTable.h"

#include "host/Command.h"

namespace
{

quint32 tableKey(int command, int motorBank, int type)
{
    return (static_cast<quint32>(command & 0xFF) << 16) | (static_cast<quint32>(motorBank & 0xFF) << 8) |
           static_cast<quint32>(type & 0xFF);
}

} // namespace

void ValueTable::add(int command, int motorBank, int type, const Reader &reader)
{
    m_readers.insert(tableKey(command, motorBank, type), reader);
}

std::optional<qint32> ValueTable::read(const Command &request) const
{
    const auto found = m_readers.constFind(tableKey(request.command(), request.motorBank(), request.type()));
    if (found == m_readers.constEnd()) {
        return std::nullopt;
    }
    return (*found)();
}
