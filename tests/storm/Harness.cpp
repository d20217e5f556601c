#include "Harness.h"

#include "Watch.h"

#include <QElapsedTimer>
#include <QPluginLoader>
#include <QRegularExpression>

#include <unistd.h>

Recorded::Recorded(const QByteArray &content)
{
    static const QRegularExpression numbers("^([0-9]+);(-?[0-9]*;)*\r$");
    QList<QByteArray> all = content.split('\n');
    isWhole = all.takeLast().isEmpty();
    hasHeader = all.size() >= 2 && all.at(0).startsWith("Module:;") && all.at(1).startsWith("Counter;");
    const QList<QByteArray> dataLines = all.mid(hasHeader ? 2 : 0);
    for (const QByteArray &line : dataLines) {
        const auto match = numbers.match(QString::fromLatin1(line));
        const qint64 number = match.captured(1).toLongLong();
        isWhole = isWhole && match.hasMatch() && number > lastNumber;
        lastNumber = number;
        ++lines;
    }
}

ContainerInterface *pluginRoot()
{
    static auto *const loader = new QPluginLoader(PLUGIN);
    return qobject_cast<ContainerInterface *>(loader->instance());
}

StormModule *plugIn(PluginHandler *handler, const QString &key, quint32 shape)
{
    auto *const module = new StormModule(key, shape * 16U + 5U);
    if (!handler->addModulePlugin(module)) {
        delete module;
        return nullptr;
    }
    return module;
}

void chooseAll(PluginHarness *harness, int curves)
{
    QMetaObject::invokeMethod(harness->plugin, "updateModuleList");
    for (int curve = 0; curve < curveCount; ++curve) {
        for (const char axis : {'X', 'Y'}) {
            ComboBox *const box = harness->moduleBox(curve, axis);
            box->setCurrentIndex(-1);
            box->setCurrentIndex(axis == 'X' ? 0 : box->count() - 1);
            QTableView *const table = harness->table(curve, axis);
            if (table->model() != nullptr) {
                QMetaObject::invokeMethod(table, "clicked",
                                          Q_ARG(QModelIndex, table->model()->index(axis == 'X' ? 0 : 1, 0)));
            }
        }
        if (harness->curveBox(curve)->isChecked() != (curve < curves)) {
            harness->curveBox(curve)->click();
        }
    }
}

Recorder::Recorder() : channel(plugIn(&harness.handler, "R/0", 2)->channel)
{
    channel->answer = [this](const Command &) { return static_cast<qint32>(++m_value % 100000U); };
    harness.open();
    chooseAll(&harness);
    harness.sampleTick(); // the first points are not recorded
}

void Recorder::start(const QString &path)
{
    if (harness.logBox()->isChecked()) {
        harness.logBox()->click();
    }
    harness.startLog(path);
    m_announcedBefore = Watch::announcedLines();
}

qint64 Recorder::tick(int count)
{
    constexpr unsigned int longestTickSeconds = 60;
    qint64 slowest = 0;
    for (int index = 0; index < count; ++index) {
        QElapsedTimer clock;
        clock.start();
        alarm(longestTickSeconds); // the signal ends the process: a tick that never ends is a fault, too
        StormChannel::advance(tickMs);
        harness.sampleTick();
        alarm(0);
        slowest = qMax(slowest, clock.elapsed());
    }
    return slowest;
}

qint64 Recorder::announced() const
{
    return Watch::announcedLines() - m_announcedBefore;
}
