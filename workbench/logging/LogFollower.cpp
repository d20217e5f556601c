#include "logging/LogFollower.h"

#include "PlotterWindow.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace
{

constexpr int startBytes = 256;

} // namespace

LogFollower::LogFollower(const QString &path) : m_path(path) {}

void LogFollower::poll()
{
    const QFileInfo info(m_path);
    m_isRegular = !info.exists() || (info.isFile() && info.isReadable());
    if (!info.exists() && m_isThere) {
        beginAnew();
    }
    m_isThere = info.exists();
    QFile file(m_path);
    if (!m_isThere || !m_isRegular || !file.open(QIODevice::ReadOnly)) {
        return;
    }
    if (file.size() < m_bytes || file.peek(m_start.size()) != m_start) {
        beginAnew();
    }
    if (m_start.size() < startBytes) {
        m_start = file.peek(startBytes);
    }
    file.seek(m_bytes);
    const QByteArray added = file.readAll();
    const int before = dataLines();
    m_bytes += added.size();
    m_lines += added.count('\n');
    if (dataLines() > before) {
        m_lastLineTime = QDateTime::currentDateTime();
    }
}

QString LogFollower::path() const
{
    return m_path;
}

bool LogFollower::isThere() const
{
    return m_isThere;
}

bool LogFollower::isRegular() const
{
    return m_isRegular;
}

bool LogFollower::hasHeader() const
{
    return PlotterWindow::isLogStart(m_start);
}

bool LogFollower::wasReplaced() const
{
    return m_wasReplaced;
}

qint64 LogFollower::bytes() const
{
    return m_bytes;
}

int LogFollower::dataLines() const
{
    return std::max(0, m_lines - (hasHeader() ? PlotterWindow::logHeaderLines : 0));
}

QDateTime LogFollower::lastLineTime() const
{
    return m_lastLineTime;
}

void LogFollower::beginAnew()
{
    m_wasReplaced = m_wasReplaced || m_bytes > 0;
    m_start.clear();
    m_bytes = 0;
    m_lines = 0;
}
