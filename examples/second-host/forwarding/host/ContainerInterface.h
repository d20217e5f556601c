#pragma once

#include "secondhost/plugin_bases.hpp"

#define ContainerInterface_iid SECONDHOST_CONTAINER
