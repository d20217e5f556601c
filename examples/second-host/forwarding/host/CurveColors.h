#pragma once

#include "secondhost/tools.hpp"
