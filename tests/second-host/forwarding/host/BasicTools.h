#pragma once

#include "secondhost/tools.h"
