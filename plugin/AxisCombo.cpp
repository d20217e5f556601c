#include "AxisCombo.h"

#include "host/HostAccess.h"

namespace
{

constexpr quint32 wholeMask = 0xFFFFFFFFU;
constexpr quint32 topBit = 0x80000000U;
constexpr unsigned int wholeWidthBits = 32;
constexpr unsigned int shiftCountMask = 31; // shift counts are taken modulo 32

} // namespace

AxisCombo::AxisCombo(CommandHandlerInterface *moduleHandler, unsigned char address)
    : handler(moduleHandler)
    , shift(0)
    , pair(HostAccess::emptyPair<CommandCombo>())
    , request(HostAccess::requestOf(pair))
    , reply(HostAccess::replyOf(pair))
    , mask(wholeMask)
{
    request.setAddress(address);
}

void AxisCombo::bind(QObject *module, CommandHandlerInterface *moduleHandler, unsigned char address)
{
    m_module = module;
    m_isBound = true;
    handler = moduleHandler;
    request.setAddress(address);
}

void AxisCombo::switchOff()
{
    handler = nullptr;
    request.setAddress(unboundAddress);
}

bool AxisCombo::isOn() const
{
    return handler != nullptr && !(m_isBound && m_module.isNull());
}

void AxisCombo::setRequest(Command *command, unsigned char offset, unsigned char width, bool isSigned)
{
    request = *command;
    shift = offset;
    if (width < wholeWidthBits) {
        mask = (1U << width) - 1U;
        signBit = 1U << ((width - 1U) & shiftCountMask);
    } else {
        mask = wholeMask;
        signBit = topBit;
    }
    if (!isSigned) {
        signBit = 0;
    }
}

qint32 AxisCombo::value() const
{
    const auto shifted = static_cast<quint32>(static_cast<qint32>(reply.value()) >> (shift & shiftCountMask));
    const quint32 field = shifted & mask & ~signBit;
    // With signBit 0 the condition is always true, and subtracting 0 changes nothing.
    const bool isNegative = (shifted & signBit) == signBit;
    return static_cast<qint32>(isNegative ? field - signBit : field);
}
