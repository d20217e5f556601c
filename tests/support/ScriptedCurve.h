#pragma once

#include "PluginHarness.h"
#include "ScriptedModule.h"

/// An open plugin with one module, "S/m", whose values "pos" and "speed" are set by the test.
class ScriptedCurve : public PluginHarness
{
    Q_OBJECT

public:
    explicit ScriptedCurve(ContainerInterface *root);

    /// Makes "pos" the X and "speed" the Y of a curve.
    void chooseBoth(int curve = 0);
    /// Adds a second module, "S/other", with a value "speed", and waits until it can be chosen.
    ScriptedModule *addOther();

    void sample(qint32 newX, qint32 newY);

    ScriptedModule *module;
    qint32 x = 0;
    qint32 y = 0;
};
