#pragma once

class QCheckBox;
class QPoint;
class QWidget;

/// Clicks as a person makes them: a press and a release of the left button, sent to a widget at once.
namespace MouseClick
{

/// \a position in pixels of \a widget.
void at(QWidget *widget, const QPoint &position);

/// In the middle of what the style takes for a click on the box.
void on(QCheckBox *box);

} // namespace MouseClick
