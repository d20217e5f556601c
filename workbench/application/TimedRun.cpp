#include "application/TimedRun.h"

#include "logging/WriteObstacle.h"

#include <QCoreApplication>
#include <QPixmap>
#include <QSaveFile>
#include <QTimer>
#include <QWidget>

TimedRun::TimedRun(QWidget *widget, const QString &picturePath, QObject *parent)
    : QObject(parent), m_widget(widget), m_picturePath(picturePath), m_error(tr("the run was ended before its time"))
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
    const QString obstacle = writeObstacle(path);
    return obstacle.isEmpty() ? QString() : tr("%1: cannot save there: %2").arg(path, obstacle);
}

void TimedRun::finish()
{
    if (m_widget.isNull() || !m_widget->isVisible()) {
        m_error = tr("the plot window was closed before the run was over");
        QCoreApplication::exit(1);
        return;
    }
    emit ending();
    if (m_picturePath.isEmpty()) {
        m_error.clear();
        QCoreApplication::exit(0);
        return;
    }
    QSaveFile file(m_picturePath); // a failed save leaves what was there before
    const bool isSaved = file.open(QIODevice::WriteOnly) && m_widget->grab().save(&file, "PNG") && file.commit();
    m_error = isSaved ? QString() : tr("%1: cannot save the picture: %2").arg(m_picturePath, file.errorString());
    QCoreApplication::exit(isSaved ? 0 : 1);
}
