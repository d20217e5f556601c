#pragma once

/// The command numbers of register access.
namespace RegisterCommand
{

constexpr unsigned char Write = 147;
constexpr unsigned char Read = 148;
constexpr unsigned char ReadOnChannel = 149; ///< instead of Read, at modules on channel 1

} // namespace RegisterCommand
