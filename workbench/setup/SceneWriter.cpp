#include "setup/SceneWriter.h"

#include "setup/ContainerFields.h"
#include "setup/ModuleFields.h"
#include "setup/SceneReader.h"

#include "host/ReplaceableFile.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

namespace
{

struct SceneWriterText
{
    Q_DECLARE_TR_FUNCTIONS(SceneWriter)
};

QJsonObject layoutObject(const WindowLayout &layout)
{
    QJsonObject object = {{QStringLiteral("maximised"), layout.isMaximised}};
    if (layout.size.isValid()) {
        object.insert(QStringLiteral("width"), layout.size.width());
        object.insert(QStringLiteral("height"), layout.size.height());
    }
    if (!layout.docks.isEmpty()) {
        object.insert(QStringLiteral("docks"), QString::fromLatin1(layout.docks.toBase64()));
    }
    return object;
}

} // namespace

QByteArray sceneText(const Scene &scene)
{
    QJsonArray modules;
    for (const ModuleSettings &module : scene.modules) {
        modules.append(writeModule(module, !scene.takenOut.contains(module.key)));
    }
    QJsonArray containers;
    const QList<SceneContainer> all = scene.containers();
    for (const SceneContainer &container : all) {
        containers.append(ContainerFields::write(container));
    }
    const QJsonObject root = {
        {QStringLiteral("title"), scene.title},
        {QStringLiteral("seed"), double(scene.seed)},
        {QStringLiteral("modules"), modules},
        {QStringLiteral("containers"), containers},
        {QStringLiteral("frontContainer"), scene.frontContainer + 1},
        {QStringLiteral("window"), layoutObject(scene.layout)},
    };
    return QJsonDocument(root).toJson();
}

QString writeSceneFile(const Scene &scene, const QString &path)
{
    const QString obstacle = obstacleToReplacing(path);
    if (!obstacle.isEmpty()) {
        return SceneWriterText::tr("%1: cannot be saved: %2").arg(path, obstacle);
    }
    const QByteArray text = sceneText(scene);
    const QString mistake = readScene(text, path).error; // what cannot be opened again must not replace a file
    if (!mistake.isEmpty()) {
        return SceneWriterText::tr("%1: cannot be saved: %2").arg(path, mistake);
    }
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.commit()) {
        return SceneWriterText::tr("%1: cannot be saved: %2").arg(path, file.errorString());
    }
    return {};
}
