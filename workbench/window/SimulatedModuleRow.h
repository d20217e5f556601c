#pragma once

#include "window/ModuleRow.h"

class QComboBox;
struct SimulationSettings;

/// The row of a simulated module: boxes that let it move, silence it or make it slow.
class SimulatedModuleRow : public ModuleRow
{
    Q_OBJECT

public:
    SimulatedModuleRow(ModuleRack *rack, const AnswerWatch *watch, int index, const SimulationSettings &settings);

    void refresh() override;

private:
    static QString textOf(int answerTimeMs);
    QComboBox *makeAnswerTimeBox();

    QCheckBox *m_moving = nullptr;
    QCheckBox *m_silent = nullptr;
    QComboBox *m_answerTime = nullptr;
};
