#pragma once

#include "host/Command.h"

/**
 * A request and its reply, adjacent in memory in this order.
 *
 * The layout is part of the contract: callers may pass the address of two adjacent Command members as a CommandCombo.
 */
struct CommandCombo
{
    Command request;
    Command reply;
};
