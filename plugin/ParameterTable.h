#pragma once

#include <QList>
#include <QString>

class KAROModuleInterface;
class QAbstractItemModel;
class QIcon;
class QStandardItemModel;
class Register;

/**
 * The tables of a module's values that can be sampled, one value per row, ready to be turned into a request: see
 * TableRole for what the items carry. Rows are written from row 0 on.
 */
namespace ParameterTable
{

/**
 * Fills \a model with the readable axis parameters of \a motor, the user variables and the inputs and outputs.
 * A group of parameters that the module does not have adds no rows.
 */
void fillAxisTable(QStandardItemModel *model, KAROModuleInterface *module, int motor);

/**
 * Fills \a model with the registers and register fields wider than 3 bit, sorted by title.
 * \param command  number of the command that reads a register, see RegisterCommand
 * \param signIcon shown beside the box that makes a field signed; one for all rows and tables, because each copy of its
 *                 own has its own pixmaps, and its own entries in Qt's cache of scaled ones
 */
void fillRegisterTable(QStandardItemModel *model, const QList<Register *> &registers, int command,
                       const QIcon &signIcon);

/// The caption of a table: its module and motor. Empty without a model.
QString caption(const QAbstractItemModel *model);

} // namespace ParameterTable
