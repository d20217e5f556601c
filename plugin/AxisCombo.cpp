#include "AxisCombo.h"

namespace
{

constexpr quint32 wholeMask = 0xFFFFFFFFU;
constexpr quint32 topBit = 0x80000000U;
constexpr unsigned int wholeWidthBits = 32;
constexpr unsigned int shiftCountMask = 31; // shift counts are taken modulo 32

} // namespace

AxisCombo::AxisCombo(CommandHandlerInterface *moduleHandler, unsigned char address)
    : handler(moduleHandler), shift(0), mask(wholeMask)
{
    request.setAddress(address);
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
    Command answer = reply; // reading the value is no const operation in every host
    const auto shifted = static_cast<quint32>(static_cast<qint32>(answer.value()) >> (shift & shiftCountMask));
    const quint32 field = shifted & mask & ~signBit;
    // Without a sign bit the test holds always and takes nothing away.
    const bool isNegative = (shifted & signBit) == signBit;
    return static_cast<qint32>(isNegative ? field - signBit : field);
}

CommandCombo *AxisCombo::exchange()
{
    return reinterpret_cast<CommandCombo *>(&request);
}
