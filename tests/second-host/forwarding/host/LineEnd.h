#pragma once

#include "secondhost/base.h"

const char *const hostLineEnd = secondhost::lineBreak;
