#pragma once

#include "modules/modbus/RegisterSpan.h"

#include <functional>
#include <optional>

class Command;

/// A value of a device: where it stands, and how what is read there becomes the answer.
struct ModbusValue
{
    RegisterSpan span;
    /// From as many words as the span has entries, in the order of their addresses. A coil or a discrete input is a
    /// word of 0 or 1. May be called from any thread.
    std::function<qint32(const quint16 *words)> decode;
};

/// The value that a request asks for; nothing when the device has no such value.
using ModbusLookup = std::function<std::optional<ModbusValue>(const Command &request)>;
