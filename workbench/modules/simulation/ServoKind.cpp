#include "modules/simulation/ModuleKind.h"
#include "modules/simulation/ValueTable.h"
#include "modules/simulation/WrappedCounter.h"

#include "host/ParameterType.h"

namespace
{

using Axis = SimulatedAxis;
using Machine = SimulatedMachine;

/// An increment of the servo's encoder counts as a microstep of its motion program.
AxisDescription axis()
{
    AxisDescription description;
    AxisMechanics &mechanics = description.mechanics;
    mechanics.maximumVelocity = 300000.0;
    mechanics.maximumAcceleration = 1500000.0;
    mechanics.microstepsPerRevolution = 65536.0;
    mechanics.encoderCountsPerRevolution = 65536.0;
    mechanics.velocityNoise = 60.0;
    mechanics.naturalFrequencyHz = 6.0; // a soft coupling: swings visibly when it stops
    mechanics.dampingRatio = 0.35;
    mechanics.backlash = 900.0;
    mechanics.inertiaCurrent = 0.0006;
    mechanics.frictionCurrent = 180.0;
    mechanics.viscousCurrent = 0.0008;
    mechanics.standbyCurrent = 0.0;
    mechanics.leftSwitchPosition = -128000.0;
    mechanics.rightSwitchPosition = 128000.0;

    description.motion.kind = MotionProgram::Kind::Reciprocate;
    description.motion.amplitude = 131072.0;
    return description;
}

std::vector<AxisParameterRow> axisParameters()
{
    return {
        {"par::position::target", 0, "Target position", "increments", "rw",
         [](const Axis &a) { return a.targetPosition(); }},
        {"par::position::actual", 1, "Actual position", "increments", "rw",
         [](const Axis &a) { return a.encoderPosition(); }},
        {"par::position::demand", 2, "Demand position", "increments", "r",
         [](const Axis &a) { return a.rampPosition(); }},
        {"par::position::motor", 3, "Motor position", "increments", "r",
         [](const Axis &a) { return a.actualPosition(); }},
        {"par::position::error", 4, "Following error", "increments", "r",
         [](const Axis &a) { return a.followingError(); }},
        {"par::position::reached", 5, "Position reached", "", "r",
         [](const Axis &a) { return qint32(a.isTargetReached()); }},
        {"par::velocity::actual", 10, "Actual velocity", "increments/s", "r",
         [](const Axis &a) { return a.actualVelocity(); }},
        {"par::velocity::demand", 11, "Demand velocity", "increments/s", "r",
         [](const Axis &a) { return a.rampVelocity(); }},
        {"par::velocity::maximum", 12, "Maximum velocity", "increments/s", "rw",
         [](const Axis &a) { return wrappedCounter(a.mechanics().maximumVelocity); }},
        {"par::velocity::acceleration", 13, "Demand acceleration", "increments/s^2", "r",
         [](const Axis &a) { return a.rampAcceleration(); }},
        {"par::torque::current", 20, "Torque current", "mA", "r", [](const Axis &a) { return a.torqueCurrent(); }},
        {"par::torque::temperature", 21, "Winding temperature", "0.1 degC", "r",
         [](const Axis &a) { return a.temperature(); }},
        {"par::torque::offset", 22, "Torque offset", "mA", "w", nullptr},
        {"info::countsPerRevolution", 100, "Counts per revolution", "", "r",
         [](const Axis &a) { return wrappedCounter(a.mechanics().encoderCountsPerRevolution); }},
    };
}

std::vector<MachineParameterRow> userVariables()
{
    return {
        {"variable::0", 0, "Exchange counter", "", "r", [](const Machine &m) { return m.exchangeCount(); }},
        {"variable::1", 1, "Elapsed time", "ms", "r", [](const Machine &m) { return m.elapsedMs(); }},
        {"variable::2", 2, "Sine table", "15 bit", "r",
         [](const Machine &m) { return wrappedCounter(32767.0 * m.testSignals().sine()); }},
        {"variable::3", 3, "Constant, zero", "", "rw", [](const Machine &) { return 0; }},
    };
}

std::vector<MachineParameterRow> digitalInputs()
{
    return {
        {"input::00", 0, "Negative limit switch", "", "r",
         [](const Machine &m) { return qint32(m.axis(0).isLeftSwitchClosed()); }},
        {"input::01", 1, "Positive limit switch", "", "r",
         [](const Machine &m) { return qint32(m.axis(0).isRightSwitchClosed()); }},
        {"input::02", 2, "Home switch", "", "r",
         [](const Machine &m) { return qint32(m.axis(0).isHomeSwitchClosed()); }},
    };
}

std::vector<MachineParameterRow> analogInputs()
{
    return {
        {"input::00", 0, "Supply voltage", "mV", "r", [](const Machine &m) { return m.supplyVoltage(); }},
        {"input::01", 1, "Board temperature", "0.1 degC", "r", [](const Machine &m) { return m.boardTemperature(); }},
    };
}

std::vector<MachineParameterRow> digitalOutputs()
{
    return {
        {"output::00", 0, "Brake released", "", "rw", [](const Machine &m) { return qint32(m.isAnyAxisMoving()); }},
    };
}

} // namespace

ModuleKind servoKind()
{
    ModuleKind kind;
    kind.name = "servo-1";
    kind.summary = QT_TRANSLATE_NOOP(
        "ModuleKind", "One servo axis without registers: runs to and fro and swings a little when it stops.");
    kind.alias = "Single-axis servo drive";
    kind.address = 4;
    kind.channel = 1;
    kind.axes = {axis()};
    kind.axisParameters = axisParameters();
    kind.groups = {{"global2", ReadCommand::GlobalParameter, 2, userVariables()},
                   {ParameterType::DigitalInput, ReadCommand::InputOutput, 0, digitalInputs()},
                   {ParameterType::AnalogInput, ReadCommand::InputOutput, 1, analogInputs()},
                   {ParameterType::DigitalOutput, ReadCommand::InputOutput, 2, digitalOutputs()}};
    return kind;
}
