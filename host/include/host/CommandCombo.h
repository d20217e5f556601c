#pragma once

#include "host/Command.h"

/**
 * A request and the reply to it, one behind the other in memory.
 *
 * Callers may keep two neighbouring Command members and pass their address as a CommandCombo: the layout of this
 * record is part of its contract.
 */
struct CommandCombo
{
    Command request;
    Command reply;
};
