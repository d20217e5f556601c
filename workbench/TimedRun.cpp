#include "TimedRun.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QPixmap>
#include <QSaveFile>
#include <QTimer>
#include <QWidget>

TimedRun::TimedRun(QWidget *widget, const QString &picturePath, QObject *parent)
    : QObject(parent)
    , m_widget(widget)
    , m_picturePath(picturePath)
    , m_error(tr("the run was ended before its time, no picture was saved"))
{
}

void TimedRun::start(double seconds)
{
    QTimer::singleShot(qRound(seconds * 1000.0), Qt::PreciseTimer, this, &TimedRun::finish);
}

QString TimedRun::error() const
{
    return m_error;
}

QString TimedRun::problemWith(const QString &path)
{
    const QFileInfo file(path);
    if (file.isDir()) {
        return tr("%1: cannot save a picture there: it is a folder").arg(path);
    }
    const QFileInfo folder(file.absolutePath());
    if (!folder.isDir()) {
        return tr("%1: cannot save a picture there: there is no such folder").arg(path);
    }
    if (!folder.isWritable() || (file.exists() && !file.isWritable())) {
        return tr("%1: cannot save a picture there: writing is not allowed").arg(path);
    }
    return {};
}

void TimedRun::finish()
{
    if (m_widget.isNull() || !m_widget->isVisible()) {
        m_error = tr("the plot window was closed, no picture was saved");
        QCoreApplication::exit(1);
        return;
    }
    QSaveFile file(m_picturePath); // a failed save leaves what was there before
    const bool isSaved = file.open(QIODevice::WriteOnly) && m_widget->grab().save(&file, "PNG") && file.commit();
    m_error = isSaved ? QString() : tr("%1: cannot save the picture: %2").arg(m_picturePath, file.errorString());
    QCoreApplication::exit(isSaved ? 0 : 1);
}
