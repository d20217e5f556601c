#pragma once

#include <QMenu>

class ModuleRack;

/**
 * The menu to add modules to the workbench, and to change or remove those that were added.
 *
 * The rack is not owned and has to outlive the menu.
 */
class ModuleMenu : public QMenu
{
    Q_OBJECT

public:
    ModuleMenu(ModuleRack *rack, QWidget *window);

private:
    void fillLists();

    ModuleRack *const m_rack; // not owned
    QWidget *const m_window;  // behind dialogs; not owned
    QMenu *m_edit = nullptr;
    QMenu *m_remove = nullptr;
};
