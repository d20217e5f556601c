#pragma once

#include "modules/modbus/RegisterMap.h"

class FieldReader;

/**
 * Adds an error to \a reader for the first value of \a map that does not fit in with the others: values that share
 * entries of a table, rows that containers would show under the same name, tables with too many rows, axes without a
 * value, and rows that only a module with an axis can show.
 */
void checkRegisterMap(FieldReader &reader, const RegisterMap &map);
