#pragma once

#include "secondhost/register_list.hpp"
