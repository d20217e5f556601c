#pragma once

#include <QWidget>

class QAction;
class QPushButton;
class MessageFilter;
class MessageLog;
class MessageModel;
class QTreeView;

/**
 * The messages that went to the logger, with a choice of what is shown, copied and cleared, and a way to open the files
 * that they name.
 *
 * Follows the newest message while it is in view. The log is not owned. GUI thread.
 */
class MessagePanel : public QWidget
{
    Q_OBJECT

public:
    explicit MessagePanel(MessageLog *log, QWidget *parent = nullptr);

    /// The selected rows, or all rows shown when none is selected: a line each, columns separated by tabulators.
    QString text() const;

private:
    QLayout *makeControls();
    void makeView();
    void makeActions();
    void copy() const;
    /// The path that the current message names; empty when it names none.
    QString currentPath() const;
    void offerPath();

    MessageModel *const m_model;
    MessageFilter *const m_filter;
    QTreeView *m_view = nullptr;
    QPushButton *m_openButton = nullptr;
    QList<QAction *> m_pathActions;
};
