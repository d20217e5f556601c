#pragma once

#include <QGroupBox>

class AnswerWatch;
class ModuleRack;
class QCheckBox;
class QGridLayout;
class QLabel;

/**
 * One module in the module panel: what it is, a box to plug it in or out, and a mark when it does not answer as it
 * should. Each family of modules adds its own controls.
 *
 * A row belongs to one place of the rack for as long as it lives. Rack and watch are not owned and have to outlive it.
 */
class ModuleRow : public QGroupBox
{
    Q_OBJECT

public:
    /// The row for the family of the module at place \a index; owned by the caller.
    static ModuleRow *make(ModuleRack *rack, const AnswerWatch *watch, int index);

    /// Shows how the module is set now.
    virtual void refresh();
    /// Shows what the watch has found out since.
    virtual void showAnswers();

protected:
    /// What is wrong with the module, one line; empty when nothing is known to be.
    virtual QString trouble() const;

    /// \param summary what the module is, one line
    ModuleRow(ModuleRack *rack, const AnswerWatch *watch, int index, const QString &summary);

    ModuleRack *rack() const;
    int index() const;
    /// For the controls of a family, of two columns, between the "Plugged in" box and the mark of trouble.
    QGridLayout *controls() const;
    /// A box whose accessible name names the module as well.
    QCheckBox *makeBox(const QString &text, const QString &toolTip);

private:
    ModuleRack *const m_rack;         // not owned
    const AnswerWatch *const m_watch; // not owned
    const int m_index;
    QCheckBox *m_pluggedIn = nullptr;
    QGridLayout *m_controls = nullptr;
    QLabel *m_trouble = nullptr;
};
