#pragma once

#include <QMdiSubWindow>
#include <QPointer>

/**
 * A window of the workspace, with scroll bars where it is smaller than its content can be.
 *
 * Lets the Tab key leave for the panels around it, and come back: QMdiSubWindow keeps it inside, so that the panels
 * could not be reached by keyboard. Owned by the workspace.
 */
class WorkspaceWindow : public QMdiSubWindow
{
    Q_OBJECT

public:
    /// \param content becomes a child, and is closed with the window
    explicit WorkspaceWindow(QWidget *content);

    /// The window that \a content is in; null when it is in none.
    static WorkspaceWindow *of(const QWidget *content);

    /// What the window needs for its content to be shown without scrolling, up to a usual size.
    QSize usableSize() const;

protected:
    void closeEvent(QCloseEvent *event) override;
    bool focusNextPrevChild(bool next) override;

private:
    const QPointer<QWidget> m_content; // a child of a child
};
