#pragma once

#include "modules/simulation/MotionProgram.h"
#include "modules/simulation/SimulatedChannel.h"
#include "modules/simulation/SimulatedMachine.h"
#include "modules/simulation/ValueTable.h"

#include "host/KAROModuleInterface.h"

struct ModuleKind;
struct RegisterRow;

/**
 * A module that exists in this process only: it moves in simulated time and answers through a real command channel.
 *
 * Lists the parameters and registers of its kind, and answers exactly those that can be read. Owned by the registry
 * that it is added to, like every module. GUI thread.
 */
class SimulatedModule : public KAROModuleInterface
{
    Q_OBJECT

public:
    /**
     * \param key   the key for the registry, for example "SIM0/Stepper"
     * \param clock that it moves by; not owned, has to outlive it
     * \param seed  fixes all noise: the same seed and the same exchanges give the same values
     */
    SimulatedModule(const ModuleKind &kind, const QString &key, PluginHandler *handler, SimulationClock *clock,
                    quint32 seed);

    QString getAliasName() const override;
    int numberOfAxes() override;
    unsigned char moduleAddress() override;
    CommandHandlerInterface *commandHandlerInterface() override;
    int getChannel() override;
    QMap<QString, Parameter> *getParameterMapByName(QString name) override;
    QList<Register *> registers() const override;

    /// What axis \a axis, from 0 to below numberOfAxes(), does while the module moves.
    void setMotion(int axis, const MotionProgram &program);
    /// Off: the axes ramp down and stay. On from the start.
    void setMoving(bool moving);
    /// A silent module answers no request until it is made to speak again.
    void setSilent(bool silent);
    /// Real time that each answer takes, ms; 0 from the start.
    void setAnswerTime(int ms);

private:
    void addAxisParameters(const ModuleKind &kind);
    void addGroups(const ModuleKind &kind);
    void addRegisters(const ModuleKind &kind);
    void addRegisterValue(const RegisterRow &row);

    const QString m_alias;
    const unsigned char m_address;
    const int m_channelNumber;
    SimulatedMachine m_machine;
    ValueTable m_values;
    SimulatedChannel m_channel;
    QMap<QString, QMap<QString, Parameter>> m_parameterMaps;
    QList<Register *> m_registers; // children
};
