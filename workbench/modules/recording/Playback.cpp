#include "modules/recording/Playback.h"

#include "modules/recording/RecordingSettings.h"

namespace
{

constexpr int tenthsPerStep = 10;

} // namespace

Playback::Playback(qint64 lastStep) : m_lastStep(lastStep) {}

void Playback::tick()
{
    if (m_isFresh || !m_isPlaying) {
        m_isFresh = false;
        return;
    }
    m_tenths += m_speedTenths;
    if (step() <= m_lastStep) {
        return;
    }
    if (m_isRepeated) {
        m_tenths = 0;
        return;
    }
    m_tenths = m_lastStep * tenthsPerStep;
    m_isPlaying = false;
    m_isAtEnd = true;
}

qint64 Playback::step() const
{
    return m_tenths / tenthsPerStep;
}

qint64 Playback::lastStep() const
{
    return m_lastStep;
}

bool Playback::isPlaying() const
{
    return m_isPlaying;
}

bool Playback::isAtEnd() const
{
    return m_isAtEnd;
}

bool Playback::isRepeated() const
{
    return m_isRepeated;
}

int Playback::speedTenths() const
{
    return m_speedTenths;
}

void Playback::setPlaying(bool on)
{
    if (on && m_isAtEnd) {
        seek(0);
    }
    m_isPlaying = on;
}

void Playback::setRepeated(bool on)
{
    m_isRepeated = on;
}

void Playback::setSpeedTenths(int speedTenths)
{
    m_speedTenths = qBound(RecordingSettings::minimumSpeedTenths, speedTenths, RecordingSettings::maximumSpeedTenths);
}

void Playback::seek(qint64 step)
{
    m_tenths = qBound<qint64>(0, step, m_lastStep) * tenthsPerStep;
    m_isAtEnd = false;
    m_isFresh = true;
}
