#pragma once

#include "setup/ModuleFields.h"

/// The fields of recordings: "file", "beside", "playing", "repeated" and "speedTenths".
ModuleFields recordingFields();
