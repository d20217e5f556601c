#pragma once

#include "modules/simulation/SimulatedChannel.h"
#include "modules/simulation/SimulatedMachine.h"
#include "modules/simulation/SimulatedModule.h"
#include "modules/simulation/ValueTable.h"

struct ModuleDescription;
struct RegisterRow;

/**
 * The simulated module that a description tells of: lists the description's parameters and registers, and answers
 * exactly those that can be read.
 *
 * Owned by the registry that it is added to, like every module. GUI thread.
 */
class TableModule : public SimulatedModule
{
    Q_OBJECT

public:
    /// \param key, handler, clock, seed as in createModule()
    TableModule(const ModuleDescription &description, const QString &key, PluginHandler *handler,
                SimulationClock *clock, quint32 seed);

    QString getAliasName() const override;
    int numberOfAxes() override;
    unsigned char moduleAddress() override;
    CommandHandlerInterface *commandHandlerInterface() override;
    int getChannel() override;
    QMap<QString, Parameter> *getParameterMapByName(QString name) override;
    QList<Register *> registers() const override;

    void setMotion(int axis, const MotionProgram &program) override;
    MotionProgram motion(int axis) const override; ///< Hold at 0 for an axis that the module does not have.
    void setMoving(bool moving) override;
    bool isMoving() const override;
    void setSilent(bool silent) override;
    bool isSilent() const override;
    void setAnswerTime(int ms) override;
    int answerTime() const override;

private:
    void addAxisParameters(const ModuleDescription &description);
    void addGroups(const ModuleDescription &description);
    void addRegisters(const ModuleDescription &description);
    void addRegisterValue(const RegisterRow &row);
    bool hasAxis(int axis) const;

    const QString m_alias;
    const unsigned char m_address;
    const int m_channelNumber;
    SimulatedMachine m_machine;
    ValueTable m_values;
    SimulatedChannel m_channel;
    QMap<QString, QMap<QString, Parameter>> m_parameterMaps;
    QList<Register *> m_registers; // children
};
