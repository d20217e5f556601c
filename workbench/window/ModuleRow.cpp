#include "window/ModuleRow.h"

#include "modules/AnswerWatch.h"
#include "modules/ModuleRack.h"
#include "window/DeviceRow.h"
#include "window/PlaybackRow.h"
#include "window/SimulatedModuleRow.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace
{

/// Makes the row of the family whose settings it is called with.
struct RowFactory
{
    ModuleRack *rack;
    const AnswerWatch *watch;
    int index;

    ModuleRow *operator()(const SimulationSettings &settings) const
    {
        return new SimulatedModuleRow(rack, watch, index, settings);
    }
    ModuleRow *operator()(const RecordingSettings &settings) const
    {
        return new PlaybackRow(rack, watch, index, settings);
    }

    ModuleRow *operator()(const DeviceSettings &settings) const
    {
        return new DeviceRow(rack, watch, index, settings);
    }
};

} // namespace

ModuleRow *ModuleRow::make(ModuleRack *rack, const AnswerWatch *watch, int index)
{
    return std::visit(RowFactory{rack, watch, index}, rack->settings(index).family);
}

ModuleRow::ModuleRow(ModuleRack *rack, const AnswerWatch *watch, int index, const QString &summary)
    : QGroupBox(rack->settings(index).key), m_rack(rack), m_watch(watch), m_index(index)
{
    auto *const summaryLabel = new QLabel(summary);
    summaryLabel->setWordWrap(true);
    m_pluggedIn = makeBox(tr("Plugged in"), tr("Whether containers find this module"));
    connect(m_pluggedIn, &QCheckBox::toggled, this, [this](bool on) { m_rack->setPluggedIn(m_index, on); });
    m_controls = new QGridLayout;
    m_trouble = new QLabel;
    m_trouble->setObjectName(QStringLiteral("trouble"));
    m_trouble->setWordWrap(true);
    QFont bold = m_trouble->font();
    bold.setBold(true);
    m_trouble->setFont(bold);
    m_trouble->hide();

    // Short lines, so that the panel leaves a small window's width to the workspace.
    auto *const layout = new QVBoxLayout(this);
    layout->addWidget(summaryLabel);
    layout->addWidget(m_pluggedIn);
    layout->addLayout(m_controls);
    layout->addWidget(m_trouble);
}

void ModuleRow::refresh()
{
    m_pluggedIn->setChecked(m_rack->isPluggedIn(m_index));
}

void ModuleRow::showAnswers()
{
    const QString text = trouble();
    m_trouble->setText(text.isEmpty() ? text : QStringLiteral("\u26A0 ") + text);
    m_trouble->setVisible(!text.isEmpty());
}

QString ModuleRow::trouble() const
{
    return m_watch->trouble(m_index);
}

ModuleRack *ModuleRow::rack() const
{
    return m_rack;
}

int ModuleRow::index() const
{
    return m_index;
}

QGridLayout *ModuleRow::controls() const
{
    return m_controls;
}

QCheckBox *ModuleRow::makeBox(const QString &text, const QString &toolTip)
{
    auto *const box = new QCheckBox(text);
    box->setToolTip(toolTip);
    box->setAccessibleName(tr("%1: %2").arg(title(), text));
    return box;
}
