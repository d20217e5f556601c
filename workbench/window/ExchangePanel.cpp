#include "window/ExchangePanel.h"

#include "modules/AnswerWatch.h"
#include "modules/ModuleRack.h"

#include <QHeaderView>
#include <QLocale>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace
{

enum Column
{
    Module,
    PerSecond,
    Last,
    Mean,
    Longest,
    Unanswered,
    ColumnCount
};

constexpr double nsPerUs = 1000.0;
constexpr int minimumTableHeightPixels = 48; // widget pixels

/// Mean duration of all exchanges in µs; 0 before the first one.
double meanDurationUs(const CommandHandlerInterface::Statistics &statistics)
{
    return statistics.exchanges == 0 ? 0.0
                                     : double(statistics.totalDurationNs) / double(statistics.exchanges) / nsPerUs;
}

} // namespace

ExchangePanel::ExchangePanel(const ModuleRack *rack, const AnswerWatch *watch, QWidget *parent)
    : QWidget(parent), m_rack(rack), m_watch(watch), m_table(new QTreeWidget)
{
    m_table->setAccessibleName(tr("Exchanges with the modules"));
    m_table->setWhatsThis(tr("How often and how fast each module answers, and how many requests it left unanswered."));
    m_table->setHeaderLabels(
        {tr("Module"), tr("Answers/s"), tr("Last [µs]"), tr("Mean [µs]"), tr("Longest [µs]"), tr("Unanswered")});
    m_table->headerItem()->setToolTip(Unanswered, tr("Requests that got no answer in time"));
    m_table->setRootIsDecorated(false);
    m_table->setUniformRowHeights(true);
    m_table->setMinimumHeight(minimumTableHeightPixels);
    m_table->header()->setStretchLastSection(false);
    m_table->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    for (int column = PerSecond; column < ColumnCount; ++column) {
        m_table->headerItem()->setTextAlignment(column, Qt::AlignRight | Qt::AlignVCenter);
    }
    auto *const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_table);

    connect(m_watch, &AnswerWatch::polled, this, &ExchangePanel::refresh);
    refresh();
}

void ExchangePanel::refresh()
{
    while (m_table->topLevelItemCount() < m_rack->count()) {
        auto *const item = new QTreeWidgetItem(m_table);
        for (int column = PerSecond; column < ColumnCount; ++column) {
            item->setTextAlignment(column, Qt::AlignRight | Qt::AlignVCenter);
        }
    }
    while (m_table->topLevelItemCount() > m_rack->count()) {
        delete m_table->takeTopLevelItem(m_table->topLevelItemCount() - 1);
    }
    for (int index = 0; index < m_rack->count(); ++index) {
        showRow(index);
    }
}

void ExchangePanel::showRow(int index)
{
    QTreeWidgetItem *const item = m_table->topLevelItem(index);
    const auto statistics = m_rack->statistics(index);
    item->setText(Module, m_rack->settings(index).key);
    item->setDisabled(!statistics);
    if (!statistics) {
        for (int column = PerSecond; column < ColumnCount; ++column) {
            item->setText(column, QStringLiteral("-"));
        }
        return;
    }
    const QLocale locale;
    const auto number = [&](double value) { return locale.toString(value, 'f', 1); };
    item->setText(PerSecond, number(m_watch->answersPerSecond(index)));
    item->setText(Last, number(double(statistics->lastDurationNs) / nsPerUs));
    item->setText(Mean, number(meanDurationUs(*statistics)));
    item->setText(Longest, number(double(statistics->longestDurationNs) / nsPerUs));
    item->setText(Unanswered, locale.toString(statistics->unanswered));
}
