#pragma once

/**
 * The host's line end in files and messages.
 *
 * It bears a name of its own because the toolkit has a function "endl" in its namespace since 5.14: writing that name
 * compiles and yields a line feed alone.
 */
constexpr char hostLineEnd[] = "\r\n";
