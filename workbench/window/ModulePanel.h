#pragma once

#include <QList>
#include <QWidget>

class ModuleRack;
class QCheckBox;
class QScrollArea;
class QVBoxLayout;

/**
 * The list of the simulated modules, each with boxes to plug it in or out, to let it move, and to silence it.
 *
 * Shows what is in the rack (not owned, has to outlive the panel) and follows its changes.
 */
class ModulePanel : public QWidget
{
    Q_OBJECT

public:
    explicit ModulePanel(ModuleRack *rack, QWidget *parent = nullptr);

private:
    /// The boxes of one module.
    struct Row
    {
        QCheckBox *pluggedIn = nullptr;
        QCheckBox *moving = nullptr;
        QCheckBox *silent = nullptr;
    };

    void addRow(int index);
    void refresh(int index);

    ModuleRack *const m_rack; // not owned
    QScrollArea *m_scrollArea = nullptr;
    QVBoxLayout *m_layout = nullptr;
    QList<Row> m_rows;
};
