#pragma once

#include "secondhost/command_channel.hpp"
