#pragma once

#include "secondhost/widgets.hpp"
