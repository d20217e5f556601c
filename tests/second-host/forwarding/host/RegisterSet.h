#pragma once

#include "secondhost/registers.h"
