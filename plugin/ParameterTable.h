#pragma once

#include <QList>
#include <QString>

class KAROModuleInterface;
class QAbstractItemModel;
class QIcon;
class QStandardItemModel;
class Register;

/**
 * Builds the tables of those values of a module that can be sampled, one value per row. The items carry the parts of
 * the value's request, see TableRole. Rows are written from row 0 on.
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
 * \param signIcon shown beside the check box that makes a field signed. All rows share one icon, because every
 *                 separately loaded one has its own pixmaps and its own entries in QPixmapCache.
 */
void fillRegisterTable(QStandardItemModel *model, const QList<Register *> &registers, int command,
                       const QIcon &signIcon);

/// The caption of a table: its module and motor, or register list. Empty for a null model.
QString caption(const QAbstractItemModel *model);

} // namespace ParameterTable
