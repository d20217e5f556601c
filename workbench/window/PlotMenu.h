#pragma once

#include <QList>
#include <QMenu>
#include <QPointer>

#include <functional>

class QAbstractButton;

/**
 * What a plot window has buttons and boxes for, of the container that is in front: with keys, and without a mouse.
 *
 * Clicks the container's own buttons, so that all happens as if a person had done so. What the container does not have
 * is disabled. GUI thread.
 */
class PlotMenu : public QMenu
{
    Q_OBJECT

public:
    explicit PlotMenu(QWidget *parent = nullptr);

    /// \param container not owned; null when there is none in front
    void setContainer(QWidget *container);

private:
    using Finder = std::function<QAbstractButton *(const QWidget &)>;

    struct Entry
    {
        QAction *action = nullptr;
        Finder button; // none for what the container has no button for
    };

    void add(const QString &text, const char *shortcut, const QString &tip, const Finder &button);
    void addCopy();
    void copyPicture() const;
    void refresh();

    QPointer<QWidget> m_container;
    QList<Entry> m_entries;
};
