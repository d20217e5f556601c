#pragma once

#include <Qt>

/// The item data roles that carry a selectable value from a parameter or register table to the selection.
namespace TableRole
{

constexpr int Command = Qt::UserRole + 1;   ///< column 0: command number
constexpr int Type = Qt::UserRole + 2;      ///< column 1: parameter number or register address
constexpr int MotorBank = Qt::UserRole + 3; ///< column 0: motor or bank
constexpr int BitOffset = Qt::UserRole + 4; ///< column 1, registers only: bit offset of the field, bit
constexpr int BitWidth = Qt::UserRole + 5;  ///< column 1, registers only: width of the field, bit

/// Horizontal header: module and motor, or register list. Set for section 0 of a parameter or register table, and for
/// every column of an exported table, where it is ExportCSV::captionRole.
constexpr int Caption = Qt::UserRole + 6;

} // namespace TableRole

/// The columns of a parameter or register table.
namespace TableColumn
{

constexpr int Command = 0; ///< command word or register address
constexpr int Type = 1;    ///< parameter number or bit range
constexpr int Name = 2;    ///< display name
constexpr int Count = 3;

} // namespace TableColumn
