#pragma once

#include "secondhost/constants.hpp"
