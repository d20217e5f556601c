#pragma once

#include "secondhost/plugins.h"

#define ContainerInterface_iid SECONDHOST_CONTAINER_ID
