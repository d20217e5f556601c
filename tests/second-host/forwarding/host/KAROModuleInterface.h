#pragma once

#include "secondhost/plugins.h"
#include "secondhost/registers.h"
