#include "ScriptedCurve.h"

#include "GuardedTest.h"

ScriptedCurve::ScriptedCurve(ContainerInterface *root)
    : PluginHarness(root), module(new ScriptedModule(QStringLiteral("S/m")))
{
    module->addParameter("axis0", "par::x", 1, "pos");
    module->addParameter("axis0", "par::y", 2, "speed");
    module->channel.answer = [this](const Command &request) { return request.type() == 1 ? x : y; };
    // On a busy computer the channel would count as slow, and rest.
    module->channel.clock = [] { return 0; };
    handler.addModulePlugin(module);
    open();
    chooseBoth();
}

void ScriptedCurve::chooseBoth(int curve)
{
    REQUIRE(choose(curve, 'X', QStringLiteral("S/m"), QString(), QStringLiteral("pos")));
    REQUIRE(choose(curve, 'Y', QStringLiteral("S/m"), QString(), QStringLiteral("speed")));
}

ScriptedModule *ScriptedCurve::addOther()
{
    auto *const other = new ScriptedModule(QStringLiteral("S/other"), 1, 2);
    other->addParameter("axis0", "par::y", 2, "speed");
    handler.addModulePlugin(other);
    REQUIRE(QTest::qWaitFor([this] { return moduleBox(0, 'X')->count() == 2; }));
    return other;
}

void ScriptedCurve::sample(qint32 newX, qint32 newY)
{
    x = newX;
    y = newY;
    sampleTick();
}
