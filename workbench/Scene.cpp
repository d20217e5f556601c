#include "Scene.h"

namespace
{

constexpr int samplingIntervalMs = 14;

} // namespace

int Scene::exchangesPerTick() const
{
    int exchanges = 0;
    for (const SceneCurve &curve : curves) {
        exchanges += curve.x.module == curve.y.module ? 1 : 2; // one channel carries both requests at once
    }
    return exchanges;
}

int Scene::stepsPerExchange() const
{
    return qMax(1, qRound(double(samplingIntervalMs) / qMax(1, exchangesPerTick())));
}
