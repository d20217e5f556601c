#pragma once

#include "host/HostExport.h"
#include "host/Parameter.h"
#include "host/PluginInterface.h"

#include <QList>
#include <QMap>
#include <QMetaType>

class CommandHandlerInterface;
class Register;

/**
 * A connected module: a device with axes, parameters, inputs and outputs, registers and one command channel.
 *
 * Owned by the PluginHandler that it was added to. GUI thread.
 */
class HOST_EXPORT KAROModuleInterface : public PluginInterface
{
    Q_OBJECT

public:
    KAROModuleInterface(const QString &name, const QString &key, PluginHandler *handler, const QString &iconPath,
                        QWidget *parent = nullptr);
    ~KAROModuleInterface() override;

    virtual QString getAliasName() const = 0;
    virtual int numberOfAxes() = 0;            ///< 0 or more.
    virtual unsigned char moduleAddress() = 0; ///< Bus address of every request, 0 to 255.
    virtual CommandHandlerInterface *commandHandlerInterface() = 0;
    virtual int getChannel() = 0; ///< On channel 1, registers are read by command 149, else by 148.

    /**
     * The parameters of one group: "axis0", "axis1" ..., "global2", or one of the texts of ParameterType.
     * \return owned by the module; null when it has no such group
     */
    virtual QMap<QString, Parameter> *getParameterMapByName(QString name) = 0;

    /// All registers, owned by the module; empty for a module without any.
    virtual QList<Register *> registers() const = 0;
};

Q_DECLARE_METATYPE(KAROModuleInterface *)
