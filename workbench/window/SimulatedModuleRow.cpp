#include "window/SimulatedModuleRow.h"

#include "modules/ModuleRack.h"
#include "modules/simulation/ModuleKind.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>

namespace
{

QString summaryOf(const SimulationSettings &settings)
{
    const ModuleKind *const kind = findModuleKind(settings.kind);
    return kind == nullptr ? QString() : shownSummary(*kind);
}

} // namespace

SimulatedModuleRow::SimulatedModuleRow(ModuleRack *rack, const AnswerWatch *watch, int index,
                                       const SimulationSettings &settings)
    : ModuleRow(rack, watch, index, summaryOf(settings))
{
    m_moving = makeBox(tr("Moving"), tr("Off: the axes brake and stay where they are"));
    m_silent = makeBox(tr("Silent"), tr("A silent module gets requests and answers none"));
    connect(m_moving, &QCheckBox::toggled, this, [this](bool on) { this->rack()->setMoving(this->index(), on); });
    connect(m_silent, &QCheckBox::toggled, this, [this](bool on) { this->rack()->setSilent(this->index(), on); });
    m_answerTime = makeAnswerTimeBox();
    controls()->addWidget(m_moving, 0, 0);
    controls()->addWidget(m_silent, 0, 1);
    controls()->addWidget(m_answerTime, 1, 0, 1, 2);
    SimulatedModuleRow::refresh();
}

QString SimulatedModuleRow::textOf(int answerTimeMs)
{
    return answerTimeMs > CommandHandlerInterface::exchangeDeadlineMs ? tr("Too late: %1 ms").arg(answerTimeMs)
                                                                      : tr("Slow: %1 ms").arg(answerTimeMs);
}

QComboBox *SimulatedModuleRow::makeAnswerTimeBox()
{
    auto *const box = new QComboBox;
    box->setAccessibleName(tr("%1: time of an answer").arg(title()));
    box->setToolTip(tr("How long the module takes for each answer. A slow one is asked less often, so that the window "
                       "goes on; one that is too late counts as not answering."));
    box->addItem(tr("Answers at once"), 0);
    for (const int ms : {5, 50}) {
        box->addItem(textOf(ms), ms);
    }
    constexpr int tooLateMs = 300;
    static_assert(tooLateMs > CommandHandlerInterface::exchangeDeadlineMs, "it is not too late");
    box->addItem(textOf(tooLateMs), tooLateMs);
    connect(box, QOverload<int>::of(&QComboBox::activated), this,
            [this, box] { rack()->setAnswerTime(index(), box->currentData().toInt()); });
    return box;
}

void SimulatedModuleRow::refresh()
{
    ModuleRow::refresh();
    const SimulationSettings *const settings = rack()->simulation(index());
    if (settings == nullptr) {
        return; // about to be replaced by the row of another family
    }
    m_moving->setChecked(settings->isMoving);
    m_silent->setChecked(settings->isSilent);
    if (m_answerTime->findData(settings->answerTimeMs) < 0) { // of a set-up, which may have any
        m_answerTime->addItem(textOf(settings->answerTimeMs), settings->answerTimeMs);
    }
    m_answerTime->setCurrentIndex(m_answerTime->findData(settings->answerTimeMs));
    const bool isPluggedIn = rack()->isPluggedIn(index());
    m_moving->setEnabled(isPluggedIn);
    m_silent->setEnabled(isPluggedIn);
    m_answerTime->setEnabled(isPluggedIn);
}
