#pragma once

#include <QTableView>

/**
 * A table from which one row is chosen, by mouse or keyboard alike: clicked() comes for each choice.
 *
 * Enter chooses the current row and goes no further: it would press the default button of the dialog around. Space on a
 * cell with a check box ticks it and chooses the row, as a click on the box does. activated() is no choice: whether and
 * when it comes beside clicked() is up to the style.
 */
class ChoiceTable : public QTableView
{
public:
    explicit ChoiceTable(QWidget *parent);

protected:
    void keyPressEvent(QKeyEvent *event) override;
};
