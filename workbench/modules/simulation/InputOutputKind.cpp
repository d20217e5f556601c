#include "modules/simulation/ModuleKind.h"
#include "modules/simulation/WrappedCounter.h"

namespace
{

using Machine = SimulatedMachine;

qint32 millivolts(double signal)
{
    constexpr double fullScaleMillivolts = 10000.0;
    return wrappedCounter(fullScaleMillivolts * signal);
}

/// A counter that goes up every 50 ms while the test signals run.
qint32 counter(const Machine &machine)
{
    constexpr int intervalMs = 50;
    return static_cast<qint32>((machine.testSignals().elapsedMs() / intervalMs) & 0xFF);
}

qint32 grayCode(const Machine &machine)
{
    const qint32 count = counter(machine);
    return count ^ (count >> 1);
}

/// Comparators on the test signals, one bit for each.
qint32 comparators(const Machine &machine)
{
    const SignalGenerator &signal = machine.testSignals();
    return (signal.sine() > 0.0 ? 1 : 0) | (signal.cosine() > 0.0 ? 2 : 0) | (signal.triangle() > 0.5 ? 4 : 0) |
           (signal.deflection() > 0.0 ? 8 : 0);
}

std::vector<RegisterRow> inputs()
{
    return {
        {0x00,
         32,
         "Digital inputs",
         "Lines of the input connector",
         Register::Readable,
         nullptr,
         {{0, 8, "Counter", "Binary, one up every 50 ms", counter},
          {8, 8, "Gray code", "The same counter in Gray code", grayCode},
          {16, 4, "Comparators", "Sine, cosine, triangle, deflection", comparators},
          {31, 1, "Heartbeat", "Changes every 50 ms", counter}}},
        {0x04,
         32,
         "Analog inputs A",
         "A circle when plotted against each other",
         Register::Readable,
         nullptr,
         {{0, 16, "Sine", "mV (signed)", [](const Machine &m) { return millivolts(m.testSignals().sine()); }},
          {16, 16, "Cosine", "mV (signed)", [](const Machine &m) { return millivolts(m.testSignals().cosine()); }}}},
        {0x05,
         32,
         "Analog inputs B",
         "An unsigned and a signed one",
         Register::Readable,
         nullptr,
         {{0, 12, "Triangle", "Raw, 0 to 4095",
           [](const Machine &m) { return wrappedCounter(2047.5 + 2047.5 * m.testSignals().triangle()); }},
          {12, 16, "Noise", "mV (signed)", [](const Machine &m) { return millivolts(m.testSignals().randomWalk()); }}}},
        {0x06,
         32,
         "Pendulum deflection",
         "mV (signed)",
         Register::Readable,
         [](const Machine &m) { return millivolts(m.testSignals().deflection()); },
         {}},
        {0x07,
         32,
         "Pendulum velocity",
         "mV (signed); a spiral against the deflection",
         Register::Readable,
         [](const Machine &m) { return millivolts(m.testSignals().deflectionVelocity()); },
         {}},
        {0x08, 16, "Supply voltage", "mV", Register::Readable, [](const Machine &m) { return m.supplyVoltage(); }, {}},
        {0x09,
         16,
         "Board",
         "One field only",
         Register::Readable,
         nullptr,
         {{0, 10, "Temperature", "0.1 degC", [](const Machine &m) { return m.boardTemperature(); }}}},
        {0x0A,
         3,
         "Mode switch",
         "Too narrow to be worth a plot",
         Register::Readable,
         [](const Machine &m) { return qint32(m.isMoving()); },
         {}},
        {0x0B,
         32,
         "Timers",
         "Six wide fields",
         Register::Readable,
         nullptr,
         {{0, 5, "Timer 0", "1 ms", [](const Machine &m) { return m.elapsedMs(); }},
          {5, 5, "Timer 1", "2 ms", [](const Machine &m) { return m.elapsedMs() >> 1; }},
          {10, 5, "Timer 2", "4 ms", [](const Machine &m) { return m.elapsedMs() >> 2; }},
          {15, 5, "Timer 3", "8 ms", [](const Machine &m) { return m.elapsedMs() >> 3; }},
          {20, 5, "Timer 4", "16 ms", [](const Machine &m) { return m.elapsedMs() >> 4; }},
          {25, 5, "Timer 5", "32 ms", [](const Machine &m) { return m.elapsedMs() >> 5; }}}},
        {0x0C,
         32,
         "Exchange counter",
         "Exchanges of this module",
         Register::Readable,
         [](const Machine &m) { return m.exchangeCount(); },
         {}},
    };
}

std::vector<RegisterRow> outputs()
{
    return {
        {0x40,
         8,
         "Digital outputs",
         "Echo of the comparators in the upper half",
         Register::ReadableAndWritable,
         [](const Machine &m) { return comparators(m) << 4; },
         {}},
        {0x41, 8, "Reset", "Write-only", Register::Writable, nullptr, {}},
    };
}

} // namespace

ModuleKind inputOutputKind()
{
    std::vector<RegisterRow> registers = inputs();
    const std::vector<RegisterRow> behind = outputs();
    registers.insert(registers.end(), behind.begin(), behind.end());

    ModuleKind kind;
    kind.name = "io-block";
    kind.summary = QT_TRANSLATE_NOOP(
        "ModuleKind",
        "Registers only: analog and digital inputs fed by test signals (circle, spiral, noise, counters).");
    kind.alias = "Input/output block";
    kind.address = 5;
    kind.channel = 2;
    kind.registers = registers;
    return kind;
}
