#pragma once

#include "window/ExchangeRate.h"

#include <QElapsedTimer>
#include <QTimer>
#include <QVector>
#include <QWidget>

class ModuleRack;
class QTreeWidget;

/**
 * A table of the exchanges with each module: how many in a second, how long they take, what stayed unanswered.
 *
 * The rack is not owned and has to outlive the panel. GUI thread.
 */
class ExchangePanel : public QWidget
{
    Q_OBJECT

public:
    static constexpr int refreshIntervalMs = 500;

    explicit ExchangePanel(const ModuleRack *rack, QWidget *parent = nullptr);

    /// Reads all counters as they are at \a nowMs, ms of a clock that does not run backwards.
    void refresh(qint64 nowMs);
    /// Exchanges per second with all modules together.
    double perSecond() const;

signals:
    void refreshed();

private:
    void showRow(int index);

    const ModuleRack *const m_rack; // not owned
    QTreeWidget *const m_table;
    QVector<ExchangeRate> m_rates;
    QElapsedTimer m_clock;
    QTimer m_timer;
};
