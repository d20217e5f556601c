#include "window/WindowState.h"

#include "host/AppSettings.h"

#include <QCryptographicHash>
#include <QEvent>
#include <QGuiApplication>
#include <QMainWindow>
#include <QScreen>

namespace
{

const char groupName[] = "Workbench/Window";
const char placeKey[] = "Place";
const char maximisedKey[] = "Maximised";
const char docksKey[] = "Docks";
constexpr QSize usualFrame(16, 48); // of a desktop, with its title: that of a window is not known before it is shown
constexpr QRect possiblePlaces(-1000000, -1000000, 2000000, 2000000); ///< with others, sums of coordinates overflow

QByteArray checksum(const QByteArray &bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha1);
}

} // namespace

WindowState::WindowState(QMainWindow *window) : QObject(window), m_window(window)
{
    restore();
    window->installEventFilter(this);
}

QRect WindowState::onScreen(const QRect &frame, const QList<QRect> &screens)
{
    QRect best = screens.value(0);
    int mostPixels = 0;
    for (const QRect &screen : screens) {
        const QRect shown = frame.intersected(screen);
        if (shown.isValid() && shown.width() * shown.height() > mostPixels) {
            mostPixels = shown.width() * shown.height();
            best = screen;
        }
    }
    if (best.isEmpty()) {
        return frame;
    }
    QRect result(frame.topLeft(), frame.size().boundedTo(best.size()));
    result.moveLeft(qBound(best.left(), result.left(), best.right() - result.width() + 1));
    result.moveTop(qBound(best.top(), result.top(), best.bottom() - result.height() + 1));
    return result;
}

QByteArray WindowState::docks(const QMainWindow &window)
{
    const QByteArray state = window.saveState();
    return state + checksum(state);
}

bool WindowState::restoreDocks(QMainWindow *window, const QByteArray &docks)
{
    const QByteArray state = docks.chopped(qMin(docks.size(), checksum({}).size()));
    return docks == state + checksum(state) && window->restoreState(state);
}

bool WindowState::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_window && event->type() == QEvent::Close) {
        store();
    }
    return QObject::eventFilter(watched, event);
}

void WindowState::restore()
{
    AppSettings settings;
    settings.beginGroup(QString::fromLatin1(groupName));
    const QRect place = settings.value(QString::fromLatin1(placeKey)).toRect();
    QList<QRect> screens;
    const QList<QScreen *> all = QGuiApplication::screens();
    for (const QScreen *const screen : all) {
        screens.append(screen->availableGeometry());
    }
    if (place.isValid() && possiblePlaces.contains(place)) {
        const QRect frame = onScreen(QRect(place.topLeft(), place.size() + usualFrame), screens);
        m_window->resize(frame.size() - usualFrame);
        m_window->move(frame.topLeft());
    }
    if (settings.value(QString::fromLatin1(maximisedKey)).toBool()) {
        m_window->setWindowState(m_window->windowState() | Qt::WindowMaximized);
    }
    restoreDocks(m_window, settings.value(QString::fromLatin1(docksKey)).toByteArray());
}

void WindowState::store() const
{
    AppSettings settings;
    settings.beginGroup(QString::fromLatin1(groupName));
    const bool isNormal = !m_window->isMaximized() && !m_window->isFullScreen();
    // The frame's corner with the content's size, as move() and resize() take them.
    settings.setValue(QString::fromLatin1(placeKey),
                      isNormal ? QRect(m_window->pos(), m_window->size()) : m_window->normalGeometry());
    settings.setValue(QString::fromLatin1(maximisedKey), m_window->isMaximized());
    settings.setValue(QString::fromLatin1(docksKey), docks(*m_window));
}
