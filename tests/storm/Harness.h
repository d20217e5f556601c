#pragma once

#include "PluginHarness.h"
#include "Readers.h"
#include "StormModule.h"

#include <QApplication>

constexpr int curveCount = 4;
constexpr int tickMs = 14; // of the sampling timer

/// What the file of a recording holds.
struct Recorded
{
    explicit Recorded(const QByteArray &content);

    qint64 lines = 0;      ///< with data
    qint64 lastNumber = 0; ///< of the last line; that of lines when none is missing
    bool isWhole = true;   ///< every line has its end and numbers only, the first of which rises
    bool hasHeader = false;
};

/// The root object of the plugin's file, which stays loaded.
ContainerInterface *pluginRoot();

/// Adds a module that has axes; null when \a key is in use.
StormModule *plugIn(PluginHandler *handler, const QString &key, quint32 shape);

/// Makes a value of the first module in the boxes the X, and one of the last the Y, of \a curves curves, and records
/// these.
void chooseAll(PluginHarness *harness, int curves = curveCount);

/// A plugin that records new values of four curves at every tick.
class Recorder
{
public:
    Recorder();

    void start(const QString &path);
    /// Returns how long the slowest of \a count ticks took, ms.
    qint64 tick(int count);
    /// Lines since the recording was started.
    qint64 announced() const;

    PluginHarness harness{pluginRoot(), "Recorder"};
    StormChannel *const channel; ///< of the only module

private:
    quint32 m_value = 0;
    qint64 m_announcedBefore = 0;
};
