#pragma once

#include <QWidget>

class MessageFilter;
class MessageLog;
class MessageModel;
class QTreeView;

/**
 * The messages that went to the logger, with a choice of what is shown, copied and cleared.
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
    void copy() const;

    MessageModel *const m_model;
    MessageFilter *const m_filter;
    QTreeView *m_view = nullptr;
};
