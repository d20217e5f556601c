#pragma once

#include "PluginHarness.h"
#include "StormModule.h"

#include <QApplication>
#include <QTimer>

constexpr int curveCount = 4;

/// The root object of the plugin's file, which stays loaded.
ContainerInterface *pluginRoot();

/// Adds a module that has axes; null when \a key is in use.
StormModule *plugIn(PluginHandler *handler, const QString &key, quint32 shape);

/// Makes a value of the first module in the boxes the X, and one of the last the Y, of \a curves curves, and records
/// these.
void chooseAll(PluginHarness *harness, int curves = curveCount);
