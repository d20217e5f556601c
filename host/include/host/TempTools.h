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
 * Each fill replaces the list. A register that is destroyed leaves the list. The constructor's parameters are for tools
 * of other hosts and ignored here.
 */
class HOST_EXPORT TempTools
{
public:
    /**
     * \param firstModule, lastModule the range of modules
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
