#pragma once

/**
 * What an axis does, for as long as it is switched on. Positions are in microsteps.
 */
struct MotionProgram
{
    enum class Kind
    {
        Hold,        ///< ramps to offset and stays there
        Reciprocate, ///< ramps to and fro between offset - amplitude and offset + amplitude, resting at the ends
        Sine         ///< follows offset + amplitude * sin(2 pi (t / period + phase / 360))
    };

    Kind kind = Kind::Hold;
    double amplitude = 0.0;     ///< microsteps, 0 or more
    double periodSeconds = 4.0; ///< s, more than 0; Sine only
    double phaseDegrees = 0.0;  ///< degrees; Sine only
    double offset = 0.0;        ///< microsteps
};
