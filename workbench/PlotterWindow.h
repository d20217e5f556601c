#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

class QCheckBox;
class QWidget;

/**
 * All that the workbench knows of the XY-Plotter's window and of the logs that it writes.
 *
 * The workbench includes no header of the plugin: it finds the widgets of its window by their object names, as any host
 * can. When these names change, only this file has to change.
 */
namespace PlotterWindow
{

/// ms between two samples, unless the hidden slider was moved.
constexpr int samplingIntervalMs = 14;

/// Columns of the table on a selector page.
constexpr int signColumn = 1; ///< with the box for signed values
constexpr int nameColumn = 2;

/// The frame with a radio button for each curve.
QString curveFrameName();

/// Whether \a container is a plot window, with all that the following names. Only one that was opened before is known
/// as such.
bool isPlot(const QWidget *container);

/// The box that opens a save dialog and starts recording into the chosen file; unchecking it stops the recording.
QString logBoxName();

enum class Side
{
    X,
    Y
};

/// The object names of what is on the page where the source of one side of a curve is chosen.
struct SelectorPage
{
    QString stack; ///< the widget that holds the pages of all curves
    QString page;
    QString modules; ///< box
    QString motors;  ///< box, hidden when there is no choice
    QString table;
};

/// \param curve from 0
SelectorPage selectorPage(int curve, Side side);

/// What the window has a button for.
enum class Job
{
    Screenshot,
    Clear,
    Export,
    Refresh
};

/// The object name of the job's button.
QString buttonName(Job job);

/// The widget with the plot and the boxes above it.
QString plotName();

enum class Option
{
    Lines,  ///< a line between recorded dots
    Square, ///< the plot is as wide as it is high
    ShowAll ///< curves that are not recorded are shown, too
};

/// The object name of the option's check box.
QString optionBoxName(Option option);

/// The numbered boxes that switch curves on, in the curves' order.
QList<QCheckBox *> curveBoxes(const QWidget *container);

/// Lines of a log above those with samples.
constexpr int logHeaderLines = 2;

/// Whether a file that begins with \a start is a log with its header.
bool isLogStart(const QByteArray &start);

/**
 * Whether \a line is well-formed and in its place in a log.
 * \param line   without its last character, a line feed
 * \param index  of the line in the file, from 0
 * \param curves that are recorded in it
 */
bool isLogLine(const QByteArray &line, int index, int curves);

/// Whether the debug message \a text announces one more sampled line.
bool announcesLogLine(const QString &text);

} // namespace PlotterWindow
