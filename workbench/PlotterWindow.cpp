#include "PlotterWindow.h"

#include "host/LineEnd.h"

#include <QCheckBox>
#include <QVariant>

QString PlotterWindow::curveFrameName()
{
    return QStringLiteral("RadioButtonFrame");
}

bool PlotterWindow::isPlot(const QWidget *container)
{
    return container->findChild<QWidget *>(curveFrameName()) != nullptr;
}

QString PlotterWindow::logBoxName()
{
    return QStringLiteral("cbLog");
}

PlotterWindow::SelectorPage PlotterWindow::selectorPage(int curve, Side side)
{
    const QString stack = QStringLiteral("dockWidgetContents") + QLatin1Char(side == Side::X ? 'X' : 'Y');
    const QString suffix = QString::number(curve) + stack;
    return {stack, QStringLiteral("page") + suffix, QStringLiteral("cmbm") + suffix, QStringLiteral("motor") + suffix,
            QStringLiteral("cmds") + suffix};
}

QString PlotterWindow::buttonName(Job job)
{
    switch (job) {
    case Job::Screenshot:
        return QStringLiteral("btnCamera");
    case Job::Clear:
        return QStringLiteral("btnResetData");
    case Job::Export:
        return QStringLiteral("btnExport");
    case Job::Refresh:
        break;
    }
    return QStringLiteral("btnRefresh");
}

QString PlotterWindow::plotName()
{
    return QStringLiteral("widgetPlot");
}

QString PlotterWindow::optionBoxName(Option option)
{
    switch (option) {
    case Option::Lines:
        return QStringLiteral("lineModeCheck");
    case Option::Square:
        return QStringLiteral("aspectCheck");
    case Option::ShowAll:
        break;
    }
    return QStringLiteral("showAllDataCheck");
}

QList<QCheckBox *> PlotterWindow::curveBoxes(const QWidget *container)
{
    QList<QCheckBox *> found;
    const QList<QCheckBox *> boxes = container->findChildren<QCheckBox *>();
    for (QCheckBox *const box : boxes) {
        if (box->property("ColorName").isValid()) {
            found.append(box);
        }
    }
    return found;
}

bool PlotterWindow::isLogStart(const QByteArray &start)
{
    return start.startsWith("Module:;");
}

bool PlotterWindow::isLogLine(const QByteArray &line, int index, int curves)
{
    const QByteArray number = QByteArray::number(index - logHeaderLines + 1);
    const bool hasStart = index == 0   ? isLogStart(line)
                          : index == 1 ? line.startsWith("Counter;")
                                       : line.startsWith(number + ';');
    const QByteArray end = QByteArray(hostLineEnd).chopped(1);
    return hasStart && line.endsWith(';' + end) && line.count(';') == 1 + 2 * curves;
}

bool PlotterWindow::announcesLogLine(const QString &text)
{
    return text.contains(QLatin1String("new line: "));
}
