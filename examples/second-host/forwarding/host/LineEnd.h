#pragma once

#include "secondhost/constants.hpp"

const char* const hostLineEnd = secondhost::kEndOfLine;
