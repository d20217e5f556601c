#pragma once

#include "secondhost/plugin_bases.hpp"
#include "secondhost/register_list.hpp"  // Parameter
