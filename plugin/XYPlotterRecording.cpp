// The CSV recording. The file is opened for each line and closed behind it: what has been logged is out of this
// process at once and survives whatever happens to it.

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
#include <QTextStream>

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
    askingForLogFile = true;
    const QString fileName = QFileDialog::getSaveFileName(nullptr, tr("Save"), proposedFileName(), tr("csv (*.csv)"));
    if (self.isNull()) {
        if (!box.isNull()) {
            box->deleteLater();
        }
        return; // the plugin was destroyed while its dialog was open
    }
    askingForLogFile = false;
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
    logFile = new QFile(fileName);
    if (!logFile->open(QIODevice::WriteOnly)) {
        return; // the box stays checked: unchecking it ends nothing that has begun
    }
    QVector<LogText::CurveCaptions> captions;
    const QList<XYaxisCombo *> curves = axisCombos;
    for (const XYaxisCombo *const curve : curves) {
        if (!curve->points->isEmpty()) {
            captions.append({ParameterTable::caption(curve->xModel), ParameterTable::caption(curve->yModel),
                             curve->xName, curve->yName});
        }
    }
    QTextStream stream(logFile);
    stream << LogText::header(captions);
    recording = true;
    lineCounter = 1;
    logFile->close();
}

void XYPlotter::appendToLog(const QString &fields)
{
    if (!logFile->open(QIODevice::ReadWrite | QIODevice::Text)) {
        return; // this line is lost, the next one tries again
    }
    const qint64 sizeBefore = logFile->size();
    if (!logFile->isSequential()) {
        logFile->seek(sizeBefore);
    }
    QTextStream stream(logFile);
    stream << LogText::dataLine(lineCounter++, fields);
    // The message carries the number of the next line.
    qDebug().noquote() << "virtual void XYPlotter::timerEvent(QTimerEvent*)"
                       << "new line: " << QString::number(lineCounter) << ";" << fields
                       << qUtf8Printable(HostAccess::lineEnd());
    stream.flush();
    const bool isWritten = logFile->flush();
    logFile->close();
    if (!isWritten) {
        // The disk is full. Half a line would run into the next one that can be written; a number left out tells of it.
        logFile->resize(sizeBefore);
    }
}
