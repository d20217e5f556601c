#pragma once

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QRect>

class QMainWindow;

/**
 * Keeps size, place and docks of a window between runs, in the settings: restores them when it is made, and stores them
 * whenever the window is about to close. Owned by the window. GUI thread.
 */
class WindowState : public QObject
{
    Q_OBJECT

public:
    /// \param window not yet shown
    explicit WindowState(QMainWindow *window);

    /**
     * \a frame (of a window, as it was) moved and shrunk so that it lies within one of \a screens: the one that shows most
     * of it, or the first one when none shows any. The screens' rectangles are without the bars of the desktop.
     */
    static QRect onScreen(const QRect &frame, const QList<QRect> &screens);

    /// Where the docks and tool bars of \a window are, with a checksum: Qt crashes over such bytes when they are damaged.
    static QByteArray docks(const QMainWindow &window);
    /// Moves them back to where docks() found them; returns false, without effect, when \a docks is damaged.
    static bool restoreDocks(QMainWindow *window, const QByteArray &docks);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void restore();
    void store() const;

    QMainWindow *const m_window; // the owner
};
