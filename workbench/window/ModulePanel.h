#pragma once

#include <QList>
#include <QWidget>

class AnswerWatch;
class ModuleRack;
class ModuleRow;
class QScrollArea;
class QVBoxLayout;

/**
 * The list of the modules, a ModuleRow each.
 *
 * Shows what is in the rack and what the watch finds (both not owned, have to outlive the panel).
 */
class ModulePanel : public QWidget
{
    Q_OBJECT

public:
    ModulePanel(ModuleRack *rack, const AnswerWatch *watch, QWidget *parent = nullptr);

private:
    void addRow(int index);
    void fitWidth();
    void makeRowsAgain();
    void refresh(int index);
    void showAnswers();

    ModuleRack *const m_rack;         // not owned
    const AnswerWatch *const m_watch; // not owned
    QScrollArea *m_scrollArea = nullptr;
    QVBoxLayout *m_layout = nullptr;
    QList<ModuleRow *> m_rows;
};
