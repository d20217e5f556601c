#pragma once

#include "modules/simulation/SimulatedMachine.h"

#include "host/Register.h"

#include <QString>

#include <functional>
#include <vector>

using AxisReader = qint32 (*)(const SimulatedAxis &);
using MachineReader = std::function<qint32(const SimulatedMachine &)>;

/// One line of a parameter table; texts in UTF-8. A row whose access lacks "r" is listed and never answered.
template<typename Reader> struct ParameterRow
{
    const char *key;
    int number; ///< 0 to 255
    const char *name;
    const char *unit;   ///< behind the name, in brackets; may be empty
    const char *access; ///< "r", "w" or "rw"
    Reader read;        ///< null when the access lacks "r"
};

using AxisParameterRow = ParameterRow<AxisReader>;
using MachineParameterRow = ParameterRow<MachineReader>;

/// A bit field of a register; of the value that is read, the low bits are kept.
struct FieldRow
{
    int bitOffset; ///< bit
    int width;     ///< bit
    const char *title;
    const char *description;
    MachineReader read;
};

/// A register: either with a value of its own or with fields.
struct RegisterRow
{
    int address; ///< 0 to 255
    int width;   ///< bit
    const char *title;
    const char *description;
    Register::Kind kind;
    MachineReader read; ///< null when there are fields or when it can only be written
    std::vector<FieldRow> fields;
};

/// Groups of values that belong to the module as a whole.
struct MachineParameterGroup
{
    const char *mapName; ///< the name that the module is asked for
    int command;
    int motorBank;
    std::vector<MachineParameterRow> rows;
};

/// Everything that makes one kind of simulated module different from another; texts in UTF-8.
struct ModuleKind
{
    const char *name;    ///< by which scenes ask for it, for example "stepper-3"
    const char *summary; ///< one line for a person: what it is and what it has to show; to be translated
    const char *alias;
    int address; ///< on the bus, 0 to 255
    int channel; ///< 1: registers are read by ReadCommand::RegisterOfChannel1
    std::vector<AxisDescription> axes;
    std::vector<AxisParameterRow> axisParameters; ///< of every axis
    std::vector<MachineParameterGroup> groups;
    std::vector<RegisterRow> registers;
};

/// Three stepper axes: a worn one that reciprocates, and two that draw a circle. Registers with fields of all kinds.
ModuleKind stepperKind();

/// One servo axis, no registers.
ModuleKind servoKind();

/// Inputs and outputs in registers, no axes.
ModuleKind inputOutputKind();

/// All kinds of simulated modules, to which a new one has to be added.
const std::vector<ModuleKind> &simulatedModuleKinds();

/// The kind called \a name; null when there is none.
const ModuleKind *findModuleKind(const QString &name);

/// The summary of \a kind in the language of the program.
QString shownSummary(const ModuleKind &kind);
