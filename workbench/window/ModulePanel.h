#pragma once

#include <QList>
#include <QWidget>

class AnswerWatch;
class ModuleRack;
class QCheckBox;
class QComboBox;
class QLabel;
class QScrollArea;
class QVBoxLayout;

/**
 * The list of the simulated modules, each with boxes to plug it in or out, to let it move, and to silence it or
 * make it slow, and with a mark when it does not answer as it should.
 *
 * Shows what is in the rack and what the watch finds (both not owned, have to outlive the panel).
 */
class ModulePanel : public QWidget
{
    Q_OBJECT

public:
    ModulePanel(ModuleRack *rack, const AnswerWatch *watch, QWidget *parent = nullptr);

private:
    /// The boxes of one module.
    struct Row
    {
        QCheckBox *pluggedIn = nullptr;
        QCheckBox *moving = nullptr;
        QCheckBox *silent = nullptr;
        QComboBox *answerTime = nullptr;
        QLabel *trouble = nullptr;
    };

    void addRow(int index);
    QComboBox *makeAnswerTimeBox(int index);
    void refresh(int index);
    void showTrouble();

    ModuleRack *const m_rack;         // not owned
    const AnswerWatch *const m_watch; // not owned
    QScrollArea *m_scrollArea = nullptr;
    QVBoxLayout *m_layout = nullptr;
    QList<Row> m_rows;
};
