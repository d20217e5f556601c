#pragma once

#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QVector>

class ModuleRack;
class QWidget;

/**
 * Finds out from outside which modules one plot window reads, and which of its curves lost their sources.
 *
 * A container switches all sources off when any module comes or goes, and shows it by empty boxes only. So its boxes
 * are looked at, and compared with what was chosen before. The container and the rack are not owned. GUI thread.
 */
class SourceWatch : public QObject
{
    Q_OBJECT

public:
    /// ms after a module came or went when the container has emptied its boxes
    static constexpr int settlingTimeMs = 100;

    SourceWatch(QWidget *container, const ModuleRack *rack, QObject *parent);

    /// The keys of the modules that are in the registry, in the order of the rack.
    static QStringList pluggedIn(const ModuleRack &rack);

    /// Looks at the boxes; to be called regularly.
    void poll();

    /// The keys of the modules that the curves that are switched on are read from, each once.
    QStringList modules() const;

    /// Which curves that are switched on have no source, since when and why; empty when all that had one have it.
    QString problem() const;

signals:
    /// Sources have been switched off; problem() says which.
    void switchedOff();

private:
    /// One side of one curve.
    struct Source
    {
        QString module; // that was chosen last; empty before
        bool isOff = false;
    };

    void compareModules();
    bool isSwitchedOn(int curve) const;

    const QPointer<QWidget> m_container;
    const ModuleRack *const m_rack; // not owned
    QStringList m_pluggedIn;
    QVector<Source> m_sources; // two for each curve
    QString m_cause;
    bool m_isSettling = false;
};
