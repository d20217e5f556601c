#include "Harness.h"

#include <QPluginLoader>

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
