// The CSV recording. The file is opened and closed for each line, so that logged lines survive a crash of the process.

#include "KeptForProcess.h"
#include "LogFile.h"
#include "LogText.h"
#include "ParameterTable.h"
#include "XYPlotter.h"
#include "ui_XYPlotter.h"

#include "host/HostAccess.h"
#include "host/HostLogging.h"

#include <QCheckBox>
#include <QDateTime>
#include <QDebug>
#include <QFile>
#include <QFileDialog>
#include <QPointer>
#include <QSignalBlocker>

namespace
{

QString proposedFileName()
{
    return QDateTime::currentDateTime().toString(QStringLiteral("./yyyyMMdd_hh.mm.ss")) + QStringLiteral("_xyPlotter") +
           QStringLiteral(".csv");
}

} // namespace

void XYPlotter::log(bool checked)
{
    if (!checked) {
        recording = false;
        return;
    }
    const QPointer<XYPlotter> self(this);
    const QPointer<QObject> origin(sender());
    const QPointer<QCheckBox> box(ui->cbLog);
    const bool isAskingAlready = askingForLogFile; // the box was clicked again while a dialog is open
    askingForLogFile = true;
    const QString fileName = QFileDialog::getSaveFileName(nullptr, tr("Save"), proposedFileName(), tr("csv (*.csv)"));
    if (self.isNull()) {
        // Not before the first of several calls returns: the others are called by the box as well.
        if (!box.isNull() && !isAskingAlready) {
            box->deleteLater();
        }
        return; // the plugin was destroyed while its dialog was open
    }
    askingForLogFile = isAskingAlready;
    qCDebug(debLowLevel) << "void XYPlotter::log(bool)"
                         << "fileName:" << fileName;
    if (fileName.isEmpty()) {
        qCDebug(debLowLevel) << "void XYPlotter::log(bool)"
                             << "fileName:"
                             << "empty" << origin.data();
        const QSignalBlocker blocker(box);
        box->setChecked(false);
        return;
    }
    logFile = KeptForProcess::make<QFile>(fileName);
    LogFile file(logFile, QIODevice::WriteOnly);
    if (!file.isOpen()) {
        return; // the box stays checked, although nothing is recorded
    }
    QVector<LogText::CurveCaptions> captions;
    const QList<XYaxisCombo *> curves = axisCombos;
    for (const XYaxisCombo *const curve : curves) {
        if (!curve->points->isEmpty()) {
            captions.append({ParameterTable::caption(curve->xModel), ParameterTable::caption(curve->yModel),
                             curve->xName, curve->yName});
        }
    }
    const QString header = LogText::header(captions);
    // On a full disk the header is written with the first line that fits.
    pendingHeader = file.append(header) ? QString() : header;
    recording = true;
    lineCounter = 1;
}

void XYPlotter::appendToLog(const QString &fields)
{
    LogFile file(logFile, QIODevice::ReadWrite | QIODevice::Text);
    if (!file.isOpen()) {
        return; // this line is lost, the next one tries again
    }
    const QString line = LogText::dataLine(lineCounter++, fields);
    // The message carries the number of the next line.
    qDebug().noquote() << "virtual void XYPlotter::timerEvent(QTimerEvent*)"
                       << "new line: " << QString::number(lineCounter) << ";" << fields
                       << qUtf8Printable(HostAccess::lineEnd());
    // A line that does not fit on a full disk is lost as a whole; its number is missing in the file.
    if (file.append(pendingHeader + line)) {
        pendingHeader.clear();
    }
}
