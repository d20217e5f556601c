#include "Harness.h"

#include <QFileInfo>
#include <QPluginLoader>
#include <QRegularExpression>

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return QFileInfo(path).isFile() && file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

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
