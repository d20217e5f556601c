#pragma once

#include "setup/ModuleFields.h"

/// The fields of simulated modules: "axes" with a motion each, "moving", "silent" and "answerTimeMs".
ModuleFields simulationFields();
