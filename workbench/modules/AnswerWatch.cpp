#include "modules/AnswerWatch.h"

#include "modules/ModuleRack.h"

#include <QLocale>

#include <numeric>

AnswerWatch::AnswerWatch(const ModuleRack *rack, QObject *parent) : QObject(parent), m_rack(rack)
{
    m_clock.start();
    connect(&m_timer, &QTimer::timeout, this, [this] { poll(m_clock.elapsed()); });
    m_timer.start(pollIntervalMs);
    connect(m_rack, &ModuleRack::removed, this, &AnswerWatch::forget);
    connect(m_rack, &ModuleRack::replaced, this, [this](int index) {
        if (size_t(index) < m_watched.size()) {
            m_watched[size_t(index)] = Watched();
        }
    });
}

void AnswerWatch::poll(qint64 nowMs)
{
    m_watched.resize(size_t(m_rack->count()));
    for (int index = 0; index < m_rack->count(); ++index) {
        poll(index, nowMs);
    }
    emit polled();
}

void AnswerWatch::poll(int index, qint64 nowMs)
{
    constexpr int msPerSecond = 1000;
    Watched &watched = m_watched[size_t(index)];
    const auto now = m_rack->statistics(index);
    if (!now || now->exchanges < watched.statistics.exchanges) {
        watched = Watched(); // taken out, or another one in its place
    }
    if (!now) {
        return;
    }
    const auto before = watched.statistics;
    watched.statistics = *now;
    watched.rate.note(now->requests - now->unanswered, nowMs);
    if (now->rests > before.rests) {
        watched.lastRestMs = nowMs;
    }
    const bool hasAnswered = now->answeredExchanges > before.answeredExchanges;
    if (!hasAnswered && now->unanswered > before.unanswered) {
        if (watched.state != State::Silent) {
            watched.state = State::Silent;
            watched.silentSince = QTime::currentTime();
            watched.silentSinceMs = nowMs;
            emit fellSilent(index);
        }
        return;
    }
    if (!hasAnswered && watched.state != State::Slow) {
        return; // not asked since the last look
    }
    const bool wasSilent = watched.state == State::Silent;
    const bool isSlow = watched.lastRestMs > 0 && nowMs - watched.lastRestMs <= AnswerRate::windowMs;
    watched.state = isSlow ? State::Slow : State::Answering;
    if (wasSilent) {
        emit answersAgain(index, int((nowMs - watched.silentSinceMs) / msPerSecond));
    }
}

void AnswerWatch::forget(int index)
{
    if (size_t(index) < m_watched.size()) {
        m_watched.erase(m_watched.begin() + index);
    }
}

AnswerWatch::State AnswerWatch::state(int index) const
{
    return size_t(index) < m_watched.size() ? m_watched[size_t(index)].state : State::Unasked;
}

double AnswerWatch::answersPerSecond(int index) const
{
    return size_t(index) < m_watched.size() ? m_watched[size_t(index)].rate.perSecond() : 0.0;
}

double AnswerWatch::answersPerSecond() const
{
    return std::accumulate(m_watched.cbegin(), m_watched.cend(), 0.0,
                           [](double sum, const Watched &watched) { return sum + watched.rate.perSecond(); });
}

QStringList AnswerWatch::silentModules() const
{
    QStringList keys;
    for (int index = 0; index < m_rack->count(); ++index) {
        if (state(index) == State::Silent) {
            keys.append(m_rack->settings(index).key);
        }
    }
    return keys;
}

QString AnswerWatch::oldValues(int index) const
{
    if (state(index) != State::Silent) {
        return {};
    }
    const QTime since = m_watched[size_t(index)].silentSince;
    return tr("since %1 the values of %2 are old ones")
        .arg(QLocale().toString(since, QStringLiteral("hh:mm:ss")), m_rack->settings(index).key);
}

QString AnswerWatch::trouble(int index) const
{
    if (state(index) == State::Silent) {
        const QTime since = m_watched[size_t(index)].silentSince;
        return tr("Not answering since %1: its values are old ones")
            .arg(QLocale().toString(since, QStringLiteral("hh:mm:ss")));
    }
    if (state(index) == State::Slow) {
        return tr("Slow: %1 answers/s").arg(QLocale().toString(answersPerSecond(index), 'f', 1));
    }
    return {};
}
