#pragma once

#include <QTableView>

/**
 * A table from which one row is chosen, by mouse or keyboard: clicked() is emitted for every choice.
 *
 * Enter chooses the current row, and is accepted: otherwise it would press the dialog's default button. Space on a cell
 * with a check box toggles the box and chooses the row, as a click on the box does. activated() is not used for
 * choices, because it depends on the style whether a click emits it in addition to clicked().
 */
class ChoiceTable : public QTableView
{
public:
    explicit ChoiceTable(QWidget *parent);

protected:
    void keyPressEvent(QKeyEvent *event) override;
};
