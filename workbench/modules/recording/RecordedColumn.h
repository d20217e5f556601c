#pragma once

#include <QString>

/**
 * One column of numbers of a recording: where it stands in the file, and how its numbers become whole ones.
 */
struct RecordedColumn
{
    QString name;   ///< as in the header, without a unit in brackets; unique among the columns of its group
    QString unit;   ///< what the header has in brackets behind the name; may be empty
    QString module; ///< where the column came from, as the header says; may be empty
    int group = 0;  ///< curve of a log, from 0; 0 for all columns of other files
    int number = 0; ///< in its group, from 0; in a log 0 is X and 1 is Y
    int field = 0;  ///< place in a line, from 0
    int power = 0;  ///< what is played is the number in the file times ten to this, rounded to the nearest whole number

    /// The unit with the scale, for example "[0.001 mm]"; empty without either.
    QString suffix() const;
};
