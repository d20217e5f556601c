#pragma once

#include <QPointer>
#include <QWidget>

class ContainerInterface;
class NoticeBar;

/**
 * The window that shows one container plugin, from one opening to its closing.
 *
 * Becomes the container's parent, initialises it, and then is what the container's dynamic properties ask for: a
 * sub-window for a workspace or a window of its own, modal or not, with or without a size grip. When it closes it
 * emits finished(); the container then leaves it and lives on. Destroys itself when closed. Never listens to signals
 * of the container, which drops all its connections when it leaves. GUI thread.
 */
class ContainerWindow : public QWidget
{
    Q_OBJECT

public:
    /// \param container must not be null nor be in a window already; not owned
    explicit ContainerWindow(ContainerInterface *container, QWidget *parent = nullptr);
    ~ContainerWindow() override;

    /// The container in this window; null once it has left or died.
    ContainerInterface *container() const;

    /// Whether the container's window flags make it a sub-window of the workspace.
    bool isForWorkspace() const;

    /// Shows \a notices above the container, until it is called with others.
    void setNotices(const QStringList &notices);

    /// What the container needs for its parts not to cover one another, up to a usual size.
    QSize minimumSizeHint() const override;

signals:
    /// The window closes; \a code is 0.
    void finished(int code);

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void applyProperties();
    void disableTabInTables();
    void releaseContainer();

    NoticeBar *const m_notices;
    QPointer<ContainerInterface> m_container;
    bool m_isForWorkspace = false;
    bool m_hasFinished = false;
};
