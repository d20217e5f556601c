#pragma once

#include <QObject>
#include <QPointer>
#include <QString>

class QWidget;

/**
 * Lets the program run for a time, saves a picture of a widget, and ends the event loop. GUI thread.
 *
 * A signal that asks the program to end is the end of the time, too: what was done so far is kept.
 *
 * The exit code of the event loop is 0 when the picture, if one is wanted, is complete on disk, else 1.
 */
class TimedRun : public QObject
{
    Q_OBJECT

public:
    /**
     * \param widget      not owned; no picture is made of one that is hidden when the time is over
     * \param picturePath where to save the picture; empty when none is wanted
     */
    TimedRun(QWidget *widget, const QString &picturePath, QObject *parent = nullptr);

    /// Begins; \a seconds more than 0.
    void start(double seconds);

    /// What went wrong, one line; empty when the picture was saved. Of interest when the event loop has ended.
    QString error() const;

signals:
    /// The time is over, and the picture not yet made.
    void ending();

private:
    void finish();
    QString savePicture() const;

    QPointer<QWidget> m_widget;
    const QString m_picturePath;
    QString m_error;
};
