#include "window/ModulePanel.h"

#include "modules/AnswerWatch.h"
#include "modules/ModuleRack.h"
#include "modules/simulation/ModuleKind.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QScrollArea>
#include <QStyle>
#include <QVBoxLayout>

namespace
{

constexpr int minimumWidthPixels = 175; // widget pixels
constexpr int marginWidth = 4;          // widget pixels

} // namespace

ModulePanel::ModulePanel(ModuleRack *rack, const AnswerWatch *watch, QWidget *parent)
    : QWidget(parent), m_rack(rack), m_watch(watch)
{
    auto *const list = new QWidget;
    m_layout = new QVBoxLayout(list);
    m_layout->setContentsMargins(marginWidth, marginWidth, marginWidth, marginWidth);
    m_layout->addStretch(1);
    m_scrollArea = new QScrollArea;
    m_scrollArea->setWidgetResizable(true);
    m_scrollArea->setFrameShape(QFrame::NoFrame);
    m_scrollArea->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_scrollArea->setAccessibleName(tr("Simulated modules"));
    m_scrollArea->setWidget(list);
    m_scrollArea->setMinimumWidth(minimumWidthPixels);
    auto *const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_scrollArea);
    for (int index = 0; index < m_rack->count(); ++index) {
        addRow(index);
    }
    connect(m_rack, &ModuleRack::changed, this, &ModulePanel::refresh);
    connect(m_watch, &AnswerWatch::polled, this, &ModulePanel::showTrouble);
}

void ModulePanel::addRow(int index)
{
    const ModuleSettings &module = m_rack->description(index);
    auto *const group = new QGroupBox(module.key);
    auto *const summary = new QLabel;
    if (const ModuleKind *const kind = findModuleKind(module.kind)) {
        summary->setText(shownSummary(*kind));
    }
    summary->setWordWrap(true);

    Row row;
    const auto box = [&](const QString &text, const QString &toolTip) {
        auto *const checkBox = new QCheckBox(text);
        checkBox->setToolTip(toolTip);
        checkBox->setAccessibleName(tr("%1: %2").arg(module.key, text));
        return checkBox;
    };
    row.pluggedIn = box(tr("Plugged in"), tr("Whether containers find this module"));
    row.moving = box(tr("Moving"), tr("Off: the axes brake and stay where they are"));
    row.silent = box(tr("Silent"), tr("A silent module gets requests and answers none"));
    connect(row.pluggedIn, &QCheckBox::toggled, this, [=](bool on) { m_rack->setPluggedIn(index, on); });
    connect(row.moving, &QCheckBox::toggled, this, [=](bool on) { m_rack->setMoving(index, on); });
    connect(row.silent, &QCheckBox::toggled, this, [=](bool on) { m_rack->setSilent(index, on); });

    row.answerTime = makeAnswerTimeBox(index);
    row.trouble = new QLabel;
    row.trouble->setObjectName(QStringLiteral("trouble"));
    row.trouble->setWordWrap(true);
    QFont bold = row.trouble->font();
    bold.setBold(true);
    row.trouble->setFont(bold);
    row.trouble->hide();

    // Short lines, so that the panel leaves a small window's width to the workspace.
    auto *const layout = new QGridLayout(group);
    layout->addWidget(summary, 0, 0, 1, 2);
    layout->addWidget(row.pluggedIn, 1, 0, 1, 2);
    layout->addWidget(row.moving, 2, 0);
    layout->addWidget(row.silent, 2, 1);
    layout->addWidget(row.answerTime, 3, 0, 1, 2);
    layout->addWidget(row.trouble, 4, 0, 1, 2);
    m_layout->insertWidget(index, group); // before the stretch
    m_rows.append(row);
    refresh(index);
    // As wide as the boxes need in the language of the program; there is no scrolling sideways.
    const int scrollBarWidth = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    m_scrollArea->setMinimumWidth(qMax(minimumWidthPixels, m_layout->minimumSize().width() + scrollBarWidth));
}

QComboBox *ModulePanel::makeAnswerTimeBox(int index)
{
    auto *const box = new QComboBox;
    box->setAccessibleName(tr("%1: time of an answer").arg(m_rack->description(index).key));
    box->setToolTip(tr("How long the module takes for each answer. A slow one is asked less often, so that the window "
                       "goes on; one that is too late counts as not answering."));
    box->addItem(tr("Answers at once"), 0);
    for (const int ms : {5, 50}) {
        box->addItem(tr("Slow: %1 ms").arg(ms), ms);
    }
    constexpr int tooLateMs = 300;
    static_assert(tooLateMs > CommandHandlerInterface::exchangeDeadlineMs, "it is not too late");
    box->addItem(tr("Too late: %1 ms").arg(tooLateMs), tooLateMs);
    connect(box, QOverload<int>::of(&QComboBox::activated), this,
            [=] { m_rack->setAnswerTime(index, box->currentData().toInt()); });
    return box;
}

void ModulePanel::showTrouble()
{
    for (int index = 0; index < m_rows.size(); ++index) {
        QLabel *const label = m_rows.at(index).trouble;
        const QString trouble = m_watch->trouble(index);
        label->setText(trouble.isEmpty() ? trouble : QStringLiteral("\u26A0 ") + trouble);
        label->setVisible(!trouble.isEmpty());
    }
}

void ModulePanel::refresh(int index)
{
    if (index >= m_rows.size()) {
        addRow(index);
        return;
    }
    const Row &row = m_rows.at(index);
    row.pluggedIn->setChecked(m_rack->isPluggedIn(index));
    row.moving->setChecked(m_rack->isMoving(index));
    row.silent->setChecked(m_rack->isSilent(index));
    row.moving->setEnabled(m_rack->isPluggedIn(index));
    row.silent->setEnabled(m_rack->isPluggedIn(index));
    row.answerTime->setCurrentIndex(row.answerTime->findData(m_rack->answerTime(index)));
    row.answerTime->setEnabled(m_rack->isPluggedIn(index));
}
