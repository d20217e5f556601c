#pragma once

#include "FaultyDevices.h"
#include "Host.h"
#include "StormModule.h"

#include <QMap>
#include <QObject>
#include <QPointer>
#include <QVector>

class ComboBox;
class QAbstractButton;
class QTableView;

/// One event of a series: which kind, and numbers from which the kind takes what it needs.
struct Op
{
    int kind = 0;
    quint32 a = 0;
    quint32 b = 0;
    quint32 c = 0;

    int container() const
    {
        return static_cast<int>(c % StormHost::containerCount);
    }
};

/// \a number brought into the range from \a minimum to \a maximum.
inline int numberIn(quint32 number, int minimum, int maximum)
{
    return minimum + static_cast<int>(number % static_cast<quint32>(maximum - minimum + 1));
}

/// That of \a all which \a number chooses; null when there is none.
template<typename Part> Part *pick(const QList<Part *> &all, quint32 number)
{
    return all.isEmpty() ? nullptr : all.at(static_cast<int>(number % static_cast<quint32>(all.size())));
}

/**
 * Plays a series of events on the containers of a host, and checks after each, after every thousand and at the end
 * that nothing is wrong.
 *
 * No timer of a container fires by itself: time passes by events of the series. When something runs an event loop of its
 * own, such as a dialog, the next event says what becomes of it; others may be played inside it.
 */
class Player : public QObject
{
    Q_OBJECT

public:
    /// \param folder an empty folder for recordings and other files
    /// \param hasDevices whether some of the modules that come are devices on lines on which everything goes wrong
    Player(StormHost *host, const QString &folder, bool hasDevices);

    static QVector<Op> makeOps(quint32 seed, int count);
    static QString describe(const Op &op);

    /// Plays \a ops; writes the index of each to the file descriptor \a progress before it is played, unless it is -1.
    /// \return one line that says what went wrong and in which event; empty when nothing did
    QString play(const QVector<Op> &ops, int progress = -1);

    struct Counts
    {
        qint64 dialogs = 0;
        qint64 ticks = 0;
        qint64 pictures = 0;
        qint64 lines = 0;
        qint64 recordings = 0;
        qint64 leakChecks = 0;
        qint64 deviceRequests = 0;
        qint64 deviceFaults = 0;
    };
    const Counts &counts() const
    {
        return m_counts;
    }

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    friend struct OpTable;
    using Widgets = QList<QWidget *>;

    bool playNext();
    void perform(const Op &op);
    void fail(const QString &problem);

    // What is operated.
    ContainerInterface *chosen(const Op &op);
    QWidget *widget(const Op &op);
    QWidget *plotOf(ContainerInterface *container) const;
    void deliver(ContainerInterface *container, bool isSampling);
    void click(ContainerInterface *container, const QString &name);
    void tameDialog();
    void endDialog(QDialog *dialog, const Op &op);

    // The kinds of events, by a person and by the host.
    using Play = void(const Op &op);
    Play mouse, drag, wheel, key, box, table, sources, checkBox, radio, resize, visibility, look, state;
    Play tick, refresh, notices, moduleComes, moduleGoes, moduleReplaced, moduleManner, schedule, openOrClose, renew,
        log, exportWindow, button, strangeCall, picture;
    void act(int container, quint32 what);

    // What has to hold.
    void checkAlways();
    void checkThousand();
    void checkPages();
    void checkFiles();
    void checkObjects();
    void startAnew();

    KAROModuleInterface *someModule(quint32 choice) const;
    StormChannel *someChannel(quint32 choice) const;
    KAROModuleInterface *newModule(const Op &op) const;
    void plugIn(KAROModuleInterface *module);
    QString logFolder() const;

    StormHost *const m_host;
    const QString m_folder;
    QVector<Op> m_ops;
    int m_next = 0;
    int m_progress = -1;
    int m_depth = 0; // event loops inside one another
    bool m_isDelivering = false;
    QString m_problem;
    const std::unique_ptr<FaultyDevices> m_devices; // may be null
    QList<QPointer<KAROModuleInterface>> m_modules;
    qint64 m_linesOfOldFiles = 0;
    QMap<QByteArray, int> m_objectsBefore;
    qint64 m_heapBefore = 0;
    qint64 m_recordingsBefore = 0;
    int m_renewals = 0;
    Counts m_counts;
};
