#pragma once

#include "setup/Scene.h"

#include <QList>
#include <QString>

/**
 * Adds \a devices to the modules of \a scene, called "DEV0/servo-drive" and so on after their register maps.
 *
 * A scene without curves gets one: of the first device, the first two values of an axis in the order of its map, the
 * first for X; or the first two registers of a device without axes. None when there are not two.
 * \return empty, or one line that says which register map is wrong and why
 */
QString addDevices(Scene &scene, const QList<DeviceSettings> &devices);
