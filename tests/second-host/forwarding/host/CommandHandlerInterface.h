#pragma once

#include "secondhost/commands.h"
