#include "window/ModulePanel.h"

#include "modules/AnswerWatch.h"
#include "modules/ModuleRack.h"
#include "window/ModuleRow.h"

#include <QCoreApplication>
#include <QEvent>
#include <QScrollArea>
#include <QStyle>
#include <QTimer>
#include <QVBoxLayout>

namespace
{

constexpr int minimumPanelWidthPixels = 175; // widget pixels
constexpr int listMarginWidth = 4;           // widget pixels

} // namespace

ModulePanel::ModulePanel(ModuleRack *rack, const AnswerWatch *watch, QWidget *parent)
    : QWidget(parent), m_rack(rack), m_watch(watch)
{
    auto *const list = new QWidget;
    m_layout = new QVBoxLayout(list);
    m_layout->setContentsMargins(listMarginWidth, listMarginWidth, listMarginWidth, listMarginWidth);
    m_layout->addStretch(1);
    m_scrollArea = new QScrollArea;
    m_scrollArea->setWidgetResizable(true);
    m_scrollArea->setFrameShape(QFrame::NoFrame);
    m_scrollArea->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_scrollArea->setAccessibleName(tr("Modules"));
    m_scrollArea->setWidget(list);
    m_scrollArea->setMinimumWidth(minimumPanelWidthPixels);
    auto *const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_scrollArea);
    for (int index = 0; index < m_rack->count(); ++index) {
        addRow(index);
    }
    connect(m_rack, &ModuleRack::changed, this, &ModulePanel::refresh);
    connect(m_rack, &ModuleRack::removed, this, &ModulePanel::makeRowsAgain);
    connect(m_rack, &ModuleRack::replaced, this, &ModulePanel::makeRowsAgain);
    connect(m_watch, &AnswerWatch::polled, this, &ModulePanel::showAnswers);
}

void ModulePanel::addRow(int index)
{
    ModuleRow *const row = ModuleRow::make(m_rack, m_watch, index);
    m_layout->insertWidget(index, row); // before the stretch
    m_rows.insert(index, row);
    row->refresh();
    fitWidth();
}

/// As wide as the rows need in the language of the program; there is no scrolling sideways.
void ModulePanel::fitWidth()
{
    const int scrollBarWidth = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    m_scrollArea->setMinimumWidth(qMax(minimumPanelWidthPixels, m_layout->minimumSize().width() + scrollBarWidth));
}

/// Every row behind one that is gone has another place, and a row is made for the family of its module.
void ModulePanel::makeRowsAgain()
{
    for (ModuleRow *const row : qAsConst(m_rows)) {
        m_layout->removeWidget(row);
        row->setParent(nullptr);
        row->deleteLater(); // it may be the one whose button was clicked
    }
    m_rows.clear();
    for (int index = 0; index < m_rack->count(); ++index) {
        addRow(index);
    }
}

void ModulePanel::refresh(int index)
{
    if (index >= m_rows.size()) {
        addRow(index);
        // Scrolls to the new row, once it has its place.
        ModuleRow *const row = m_rows.constLast();
        QTimer::singleShot(0, row, [this, row] {
            fitWidth(); // now that its fonts are known
            QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
            m_scrollArea->ensureWidgetVisible(row);
        });
    } else {
        m_rows.at(index)->refresh();
    }
}

void ModulePanel::showAnswers()
{
    for (ModuleRow *const row : qAsConst(m_rows)) {
        row->showAnswers();
    }
}
