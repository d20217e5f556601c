#pragma once

#include "secondhost/plugins.h"
