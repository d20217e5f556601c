#pragma once

#include "secondhost/base.h"
