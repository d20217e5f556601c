#pragma once

#include <QtGlobal>

/// The four tables of a Modbus device. Each has addresses of its own.
enum class ModbusTable
{
    Coil,           ///< one bit
    DiscreteInput,  ///< one bit
    InputRegister,  ///< 16 bit
    HoldingRegister ///< 16 bit
};

/// Whether the entries of \a table are single bits.
constexpr bool isBitTable(ModbusTable table)
{
    return table == ModbusTable::Coil || table == ModbusTable::DiscreteInput;
}

/// The most entries of \a table that one request can read.
constexpr int maximumCount(ModbusTable table)
{
    return isBitTable(table) ? 2000 : 125;
}

/**
 * Neighbouring entries of one table that hold one value and are always read by one request.
 *
 * What is read of it has one 16-bit word per entry, in the order of the addresses; a bit is a word of 0 or 1.
 */
struct RegisterSpan
{
    ModbusTable table = ModbusTable::HoldingRegister;
    quint16 address = 0; ///< as on the wire, from 0
    quint16 count = 1;   ///< entries, 1 to maximumCount(table)

    /// The address behind the last entry, up to 65536.
    constexpr int end() const
    {
        return address + count;
    }

    /// False when no request can read it: its count is out of range or it goes past address 65535.
    constexpr bool isReadable() const
    {
        return count >= 1 && count <= maximumCount(table) && end() <= 65536;
    }

    friend constexpr bool operator==(const RegisterSpan &left, const RegisterSpan &right)
    {
        return left.table == right.table && left.address == right.address && left.count == right.count;
    }
};
