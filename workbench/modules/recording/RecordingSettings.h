#pragma once

#include <QString>

/// How a recording is played, as a person sets it. Plain data.
struct RecordingSettings
{
    static constexpr int minimumSpeedTenths = 1;
    static constexpr int maximumSpeedTenths = 1000;

    QString file;          ///< path of the CSV file
    QString beside;        ///< key of the module whose values are offered, too; empty for none
    bool isPlaying = true; ///< false: paused
    bool isRepeated = false;
    int speedTenths = 10; ///< 10 is the speed of the recording
};
