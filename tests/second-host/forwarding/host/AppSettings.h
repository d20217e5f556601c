#pragma once

#include "secondhost/widgets.h"
