#include "modules/simulation/ModuleKind.h"
#include "modules/simulation/ValueTable.h"
#include "modules/simulation/WrappedCounter.h"

#include "host/ParameterType.h"

namespace
{

using Axis = SimulatedAxis;
using Machine = SimulatedMachine;

std::vector<AxisDescription> axes()
{
    AxisMechanics worn; // the default mechanics: the loop of position against encoder is wide and easy to see
    worn.backlash = 9600.0;

    AxisMechanics sound;
    sound.backlash = 1600.0;
    sound.loadCurrent = 60.0;
    sound.leftSwitchPosition = -48000.0;
    sound.rightSwitchPosition = 48000.0;

    AxisMechanics vertical = sound;
    vertical.weightCurrent = 220.0;

    MotionProgram toAndFro;
    toAndFro.kind = MotionProgram::Kind::Reciprocate;
    toAndFro.amplitude = 76800.0;

    MotionProgram sine;
    sine.kind = MotionProgram::Kind::Sine;
    sine.amplitude = 51200.0;
    sine.periodSeconds = 4.0;

    MotionProgram cosine = sine;
    cosine.phaseDegrees = 90.0;

    return {{worn, toAndFro}, {sound, sine}, {vertical, cosine}};
}

std::vector<AxisParameterRow> axisParameters()
{
    return {
        {"par::position::actual", 0, "Actual position", "microsteps", "rw",
         [](const Axis &a) { return a.actualPosition(); }},
        {"par::position::target", 1, "Target position", "microsteps", "rw",
         [](const Axis &a) { return a.targetPosition(); }},
        {"par::position::ramp", 2, "Ramp position", "microsteps", "r", [](const Axis &a) { return a.rampPosition(); }},
        {"par::position::error", 3, "Following error", "microsteps", "r",
         [](const Axis &a) { return a.followingError(); }},
        {"par::position::reached", 4, "Position reached", "", "r",
         [](const Axis &a) { return qint32(a.isTargetReached()); }},
        {"par::position::moves", 5, "Completed moves", "", "r", [](const Axis &a) { return a.completedMoves(); }},
        {"par::position::clear", 6, "Clear position counter", "", "w", nullptr},

        {"par::velocity::actual", 10, "Actual velocity", "microsteps/s", "r",
         [](const Axis &a) { return a.actualVelocity(); }},
        {"par::velocity::ramp", 11, "Ramp velocity", "microsteps/s", "r",
         [](const Axis &a) { return a.rampVelocity(); }},
        {"par::velocity::maximum", 12, "Maximum velocity", "microsteps/s", "rw",
         [](const Axis &a) { return wrappedCounter(a.mechanics().maximumVelocity); }},
        {"par::velocity::acceleration", 13, "Ramp acceleration", "microsteps/s^2", "r",
         [](const Axis &a) { return a.rampAcceleration(); }},
        {"par::velocity::accelerationMaximum", 14, "Maximum acceleration", "microsteps/s^2", "rw",
         [](const Axis &a) { return wrappedCounter(a.mechanics().maximumAcceleration); }},
        {"par::velocity::phase", 15, "Ramp phase", "0..3", "r",
         [](const Axis &a) { return static_cast<qint32>(a.rampPhase()); }},

        {"par::encoder::position", 30, "Encoder position", "counts", "r",
         [](const Axis &a) { return a.encoderPosition(); }},
        {"par::encoder::deviation", 31, "Encoder deviation", "microsteps", "r",
         [](const Axis &a) { return a.encoderDeviation(); }},
        {"par::encoder::resolution", 32, "Encoder resolution", "counts/rev", "rw",
         [](const Axis &a) { return wrappedCounter(a.mechanics().encoderCountsPerRevolution); }},
        {"par::encoder::zero", 33, "Set encoder to zero", "", "w", nullptr},

        {"par::drive::current", 50, "Motor current", "mA", "r", [](const Axis &a) { return a.motorCurrent(); }},
        {"par::drive::torqueCurrent", 51, "Torque current", "mA", "r", [](const Axis &a) { return a.torqueCurrent(); }},
        {"par::drive::standbyCurrent", 52, "Standby current", "mA", "rw",
         [](const Axis &a) { return wrappedCounter(a.mechanics().standbyCurrent); }},
        {"par::drive::loadReserve", 53, "Load reserve", "0..1023", "r", [](const Axis &a) { return a.loadReserve(); }},
        {"par::drive::temperature", 54, "Winding temperature", "0.1 degC", "r",
         [](const Axis &a) { return a.temperature(); }},

        {"par::switch::left", 80, "Left limit switch", "", "r",
         [](const Axis &a) { return qint32(a.isLeftSwitchClosed()); }},
        {"par::switch::right", 81, "Right limit switch", "", "r",
         [](const Axis &a) { return qint32(a.isRightSwitchClosed()); }},
        {"par::switch::home", 82, "Home switch", "", "r", [](const Axis &a) { return qint32(a.isHomeSwitchClosed()); }},

        // The keys of what is no axis parameter begin differently; tools that list axis parameters leave it out.
        {"info::microstepsPerRevolution", 200, "Microsteps per revolution", "", "r",
         [](const Axis &a) { return wrappedCounter(a.mechanics().microstepsPerRevolution); }},
        {"command::searchReference", 201, "Search reference", "", "w", nullptr},
    };
}

std::vector<MachineParameterRow> userVariables()
{
    return {
        {"variable::0", 0, "Exchange counter", "", "r", [](const Machine &m) { return m.exchangeCount(); }},
        {"variable::1", 1, "Elapsed time", "ms", "r", [](const Machine &m) { return m.elapsedMs(); }},
        {"variable::2", 2, "Sine table", "15 bit", "r",
         [](const Machine &m) { return wrappedCounter(32767.0 * m.testSignals().sine()); }},
        {"variable::3", 3, "Cosine table", "15 bit", "r",
         [](const Machine &m) { return wrappedCounter(32767.0 * m.testSignals().cosine()); }},
        {"variable::4", 4, "Triangle table", "15 bit", "r",
         [](const Machine &m) { return wrappedCounter(32767.0 * m.testSignals().triangle()); }},
        {"variable::5", 5, "Distance between axes 1 and 2", "microsteps", "r",
         [](const Machine &m) {
             return wrappedCounter(double(m.axis(1).actualPosition()) - m.axis(2).actualPosition());
         }},
        {"variable::6", 6, "Constant, one thousand", "", "rw", [](const Machine &) { return 1000; }},
        {"variable::7", 7, "Constant, minus one", "", "rw", [](const Machine &) { return -1; }},
        {"variable::8", 8, "Stop request", "", "w", nullptr},
        {"variable::255", 255, "Greatest number", "", "r", [](const Machine &) { return 2147483647; }},
    };
}

std::vector<MachineParameterRow> digitalInputs()
{
    return {
        {"input::00", 0, "Left limit, axis 0", "", "r",
         [](const Machine &m) { return qint32(m.axis(0).isLeftSwitchClosed()); }},
        {"input::01", 1, "Right limit, axis 0", "", "r",
         [](const Machine &m) { return qint32(m.axis(0).isRightSwitchClosed()); }},
        {"input::02", 2, "Home, axis 0", "", "r",
         [](const Machine &m) { return qint32(m.axis(0).isHomeSwitchClosed()); }},
        {"input::03", 3, "Home, axis 1", "", "r",
         [](const Machine &m) { return qint32(m.axis(1).isHomeSwitchClosed()); }},
        {"input::04", 4, "Home, axis 2", "", "r",
         [](const Machine &m) { return qint32(m.axis(2).isHomeSwitchClosed()); }},
    };
}

std::vector<MachineParameterRow> analogInputs()
{
    return {
        {"input::00", 0, "Supply voltage", "mV", "r", [](const Machine &m) { return m.supplyVoltage(); }},
        {"input::01", 1, "Board temperature", "0.1 degC", "r", [](const Machine &m) { return m.boardTemperature(); }},
        {"input::02", 2, "Analog input", "mV", "r",
         [](const Machine &m) { return wrappedCounter(5000.0 + 5000.0 * m.testSignals().randomWalk()); }},
    };
}

std::vector<MachineParameterRow> digitalOutputs()
{
    return {
        {"output::00", 0, "Brake released", "", "rw", [](const Machine &m) { return qint32(m.isAnyAxisMoving()); }},
        {"output::01", 1, "Drives enabled", "", "rw", [](const Machine &m) { return qint32(m.isMoving()); }},
        {"output::02", 2, "Watchdog pulse", "", "w", nullptr},
    };
}

std::vector<RegisterRow> positionRegisters()
{
    return {
        {0x20,
         32,
         "Axis 0 position",
         "Actual position, microsteps (signed)",
         Register::Readable,
         [](const Machine &m) { return m.axis(0).actualPosition(); },
         {}},
        {0x21,
         32,
         "Axis 1 position",
         "Actual position, microsteps (signed)",
         Register::Readable,
         [](const Machine &m) { return m.axis(1).actualPosition(); },
         {}},
        {0x22,
         32,
         "Axis 2 position",
         "Actual position, microsteps (signed)",
         Register::Readable,
         [](const Machine &m) { return m.axis(2).actualPosition(); },
         {}},
        {0x23,
         32,
         "Axis 0 target",
         "Target position, microsteps (signed)",
         Register::ReadableAndWritable,
         [](const Machine &m) { return m.axis(0).targetPosition(); },
         {}},
        {0x24,
         32,
         "Axis 0 encoder",
         "Encoder position, counts (signed)",
         Register::Readable,
         [](const Machine &m) { return m.axis(0).encoderPosition(); },
         {}},
        {0x25,
         20,
         "Step time",
         "Simulated time, ms; wraps at 20 bit",
         Register::Readable,
         [](const Machine &m) { return m.elapsedMs(); },
         {}},
        {0x26,
         3,
         "Drive mode",
         "Too narrow to be worth a plot",
         Register::Readable,
         [](const Machine &m) { return qint32(m.isMoving()); },
         {}},
        {0x2F, 32, "Unlock", "Write-only", Register::Writable, nullptr, {}},
    };
}

std::vector<RegisterRow> fieldRegisters()
{
    return {
        {0x10,
         32,
         "Axis 0 motion",
         "Velocity and load",
         Register::Readable,
         nullptr,
         {{0, 20, "Actual velocity", "microsteps/s (signed)",
           [](const Machine &m) { return m.axis(0).actualVelocity(); }},
          {20, 10, "Load reserve", "1023 without load", [](const Machine &m) { return m.axis(0).loadReserve(); }}}},
        {0x11,
         32,
         "Axis 0 drive",
         "Current and temperature",
         Register::Readable,
         nullptr,
         {{0, 12, "Motor current", "mA", [](const Machine &m) { return m.axis(0).motorCurrent(); }},
          {12, 10, "Winding temperature", "0.1 degC", [](const Machine &m) { return m.axis(0).temperature(); }},
          {22, 2, "Ramp phase", "0 to 3",
           [](const Machine &m) { return static_cast<qint32>(m.axis(0).rampPhase()); }}}},
        {0x12,
         32,
         "Axis 0 coils",
         "Position in the electrical period and what it asks of the coils",
         Register::Readable,
         nullptr,
         {{0, 10, "Microstep", "0 to 1023", [](const Machine &m) { return m.axis(0).microstepIndex(); }},
          {10, 9, "Coil A", "-248 to 248 (signed)", [](const Machine &m) { return m.axis(0).coilCurrentA(); }},
          {19, 9, "Coil B", "-248 to 248 (signed)", [](const Machine &m) { return m.axis(0).coilCurrentB(); }}}},
        {0x13,
         32,
         "Axis 0 errors",
         "Deviations between ramp, motor and encoder",
         Register::Readable,
         nullptr,
         {{0, 16, "Encoder deviation", "microsteps (signed)",
           [](const Machine &m) { return m.axis(0).encoderDeviation(); }},
          {16, 16, "Following error", "microsteps (signed)",
           [](const Machine &m) { return m.axis(0).followingError(); }}}},
        {0x14,
         24,
         "Switches",
         "One bit for each; the move counter alone is wide",
         Register::ReadableAndWritable,
         nullptr,
         {{0, 1, "Left limit", "Axis 0", [](const Machine &m) { return qint32(m.axis(0).isLeftSwitchClosed()); }},
          {1, 1, "Right limit", "Axis 0", [](const Machine &m) { return qint32(m.axis(0).isRightSwitchClosed()); }},
          {2, 3, "Home switches", "One bit for each axis",
           [](const Machine &m) {
               return (m.axis(0).isHomeSwitchClosed() ? 1 : 0) | (m.axis(1).isHomeSwitchClosed() ? 2 : 0) |
                      (m.axis(2).isHomeSwitchClosed() ? 4 : 0);
           }},
          {8, 8, "Completed moves", "Axis 0; wraps at 8 bit",
           [](const Machine &m) { return m.axis(0).completedMoves(); }}}},
        {0x15,
         32,
         "Diagnostics",
         "Five wide fields",
         Register::Readable,
         nullptr,
         {{0, 6, "Phase 0", "Axis 0", [](const Machine &m) { return static_cast<qint32>(m.axis(0).rampPhase()); }},
          {6, 6, "Phase 1", "Axis 1", [](const Machine &m) { return static_cast<qint32>(m.axis(1).rampPhase()); }},
          {12, 6, "Phase 2", "Axis 2", [](const Machine &m) { return static_cast<qint32>(m.axis(2).rampPhase()); }},
          {18, 6, "Exchanges", "Wraps at 6 bit", [](const Machine &m) { return m.exchangeCount(); }},
          {24, 8, "Time", "ms, wraps at 8 bit", [](const Machine &m) { return m.elapsedMs(); }}}},
    };
}

} // namespace

ModuleKind stepperKind()
{
    std::vector<RegisterRow> registers = fieldRegisters();
    const std::vector<RegisterRow> positions = positionRegisters();
    registers.insert(registers.end(), positions.begin(), positions.end());

    ModuleKind kind;
    kind.name = "stepper-3";
    kind.summary =
        QT_TRANSLATE_NOOP("ModuleKind", "Three stepper axes with registers: axis 0 runs to and fro with play in its "
                                        "gear, axes 1 and 2 draw a circle.");
    kind.alias = "Three-axis stepper drive";
    kind.address = 3;
    kind.channel = 1;
    kind.axes = axes();
    kind.axisParameters = axisParameters();
    kind.groups = {{"global2", ReadCommand::GlobalParameter, 2, userVariables()},
                   {ParameterType::DigitalInput, ReadCommand::InputOutput, 0, digitalInputs()},
                   {ParameterType::AnalogInput, ReadCommand::InputOutput, 1, analogInputs()},
                   {ParameterType::DigitalOutput, ReadCommand::InputOutput, 2, digitalOutputs()}};
    kind.registers = registers;
    return kind;
}
