#include "application/TimedRun.h"

#include "application/EndSignals.h"
#include "logging/WriteObstacle.h"

#include <QCoreApplication>
#include <QPixmap>
#include <QSaveFile>
#include <QTimer>
#include <QWidget>

TimedRun::TimedRun(QWidget *widget, const QString &picturePath, QObject *parent)
    : QObject(parent), m_widget(widget), m_picturePath(picturePath), m_error(tr("the run was ended before its time"))
{
    if (const EndSignals *const endSignals = EndSignals::instance()) {
        connect(endSignals, &EndSignals::received, this, &TimedRun::finish);
    }
}

void TimedRun::start(double seconds)
{
    QTimer::singleShot(qRound(seconds * 1000.0), Qt::PreciseTimer, this, &TimedRun::finish);
}

QString TimedRun::error() const
{
    return m_error;
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
    m_error = savePicture();
    QCoreApplication::exit(m_error.isEmpty() ? 0 : 1);
}

QString TimedRun::savePicture() const
{
    const QString text = tr("%1: cannot save the picture: %2");
    const QString obstacle = replaceObstacle(m_picturePath); // what is there now may not be what was there at the start
    if (!obstacle.isEmpty()) {
        return text.arg(m_picturePath, obstacle);
    }
    QSaveFile file(m_picturePath); // a failed save leaves what was there before
    const bool isSaved = file.open(QIODevice::WriteOnly) && m_widget->grab().save(&file, "PNG") && file.commit();
    return isSaved ? QString() : text.arg(m_picturePath, file.errorString());
}
