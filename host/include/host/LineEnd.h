#pragma once

/**
 * The host's line end in files and messages.
 *
 * Not to be confused with Qt::endl, a function of Qt 5.14 and later that writes a line feed alone.
 */
constexpr char hostLineEnd[] = "\r\n";
