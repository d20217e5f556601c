#pragma once

#include "host/HostExport.h"

#include <QList>
#include <QPointer>
#include <QString>

class CommandHandlerInterface;
class KAROModuleInterface;
class Register;

/**
 * Holds the list of the registers that a container is working with. GUI thread.
 *
 * The list is replaced by each fill. A register that dies with its module leaves the list by itself. Only the list is
 * used by containers; what the constructor takes serves other tools and is not kept.
 */
class HOST_EXPORT TempTools
{
public:
    /**
     * \param firstModule, lastModule the range of modules that the helper is made for
     * \param handler                 a command channel, may be null; not owned
     * \param name                    a name for messages, may be empty
     * \param readCommand, writeCommand command numbers of register access
     */
    TempTools(int firstModule, int lastModule, CommandHandlerInterface *handler, QString name,
              unsigned char readCommand, unsigned char writeCommand);
    ~TempTools();

    /**
     * Replaces the list by the registers of \a module whose kind is in \a kinds, in the module's order.
     * \return whether there are any; false for a null module
     */
    bool fillCurrentRegisterList(KAROModuleInterface *module, QList<int> kinds);

    /// The registers of the last fill that are still alive.
    QList<Register *> currentRegisterList() const;

private:
    Q_DISABLE_COPY(TempTools)

    QList<QPointer<Register>> m_registers;
};
