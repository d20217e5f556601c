#pragma once

#include <QWidget>

class AnswerWatch;
class ModuleRack;
class QTreeWidget;

/**
 * A table of the exchanges with each module: how many answers in a second, how long they take, what stayed
 * unanswered.
 *
 * Rack and watch are not owned and have to outlive the panel. GUI thread.
 */
class ExchangePanel : public QWidget
{
    Q_OBJECT

public:
    ExchangePanel(const ModuleRack *rack, const AnswerWatch *watch, QWidget *parent = nullptr);

private:
    void refresh();
    void showRow(int index);

    const ModuleRack *const m_rack;   // not owned
    const AnswerWatch *const m_watch; // not owned
    QTreeWidget *const m_table;
};
