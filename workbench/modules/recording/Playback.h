#pragma once

#include <QtGlobal>

/**
 * Where a recording is being played, in steps (see RecordingFile), and how it goes on.
 *
 * Moves by calls of tick() only, once for each time that the containers sample: however long that takes, no row is
 * passed over at the speed of the recording, and a timed run reads the same rows every time. While nothing is sampled,
 * it waits. GUI thread.
 */
class Playback
{
public:
    /// Duration of a step at the speed of the recording, ms: the interval at which containers sample.
    static constexpr int stepMs = 14;

    /// \param lastStep of the recording, 0 or more
    explicit Playback(qint64 lastStep);

    /// Goes on, unless it is paused. The step at which it began, or that was chosen, is played first.
    void tick();

    qint64 step() const; ///< 0 to lastStep()
    qint64 lastStep() const;
    bool isPlaying() const;
    bool isAtEnd() const; ///< It has ended by itself; playing on begins from the start.
    bool isRepeated() const;
    int speedTenths() const; ///< 10 is the speed of the recording.

    void setPlaying(bool on);
    void setRepeated(bool on);            ///< On: at the end it goes on from the start.
    void setSpeedTenths(int speedTenths); ///< Clamped to the range of RecordingSettings.
    void seek(qint64 step);               ///< Clamped to 0 ... lastStep().

private:
    const qint64 m_lastStep;
    qint64 m_tenths = 0; // tenths of a step
    bool m_isPlaying = true;
    bool m_isAtEnd = false;
    bool m_isRepeated = false;
    bool m_isFresh = true; // the present step has not been read yet
    int m_speedTenths = 10;
};
