#pragma once

#include "secondhost/plugin_bases.hpp"
