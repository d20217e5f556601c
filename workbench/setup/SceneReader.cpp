#include "setup/SceneReader.h"

#include "reading/FieldReader.h"
#include "reading/JsonFile.h"
#include "setup/ContainerFields.h"
#include "setup/DeviceFields.h"
#include "setup/ModuleFields.h"
#include "setup/RecordingFields.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <limits>

// Outside of any namespace, as the resource compiler's functions are.
static void initSceneResources()
{
    Q_INIT_RESOURCE(scenes); // a static library's resources are not linked in unless they are initialised
}

namespace
{

constexpr qint64 maximumSceneBytes = 1024 * 1024;

struct SceneReaderText
{
    Q_DECLARE_TR_FUNCTIONS(SceneReader)
};

ContainerFields::Keys readModules(FieldReader &reader, const QJsonObject &root, Scene &scene)
{
    const QString name = QStringLiteral("modules");
    const QList<QJsonObject> modules = reader.objects(root, QString(), name, true);
    if (modules.size() > Scene::maximumModules) {
        reader.addError(QString(), name, SceneReaderText::tr("at most %1 modules").arg(Scene::maximumModules));
    }
    ContainerFields::Keys keys;
    for (int i = 0; i < modules.size(); ++i) {
        const QString place = FieldReader::placeOf(QString(), name, i);
        bool isPluggedIn = true;
        const ModuleSettings module = readModule(reader, modules.at(i), place, isPluggedIn);
        if (keys.all.contains(module.key)) {
            reader.addError(place, QStringLiteral("key"), SceneReaderText::tr("a key that no other module has"));
        }
        keys.all.append(module.key);
        if (!isPluggedIn) {
            keys.takenOut.append(module.key);
        }
        scene.modules.append(module);
    }
    scene.takenOut = keys.takenOut;
    return keys;
}

void readContainers(FieldReader &reader, const QJsonObject &root, const ContainerFields::Keys &keys, Scene &scene)
{
    const QString name = QStringLiteral("containers");
    const QString front = QStringLiteral("frontContainer");
    if (!root.contains(name)) {
        static_cast<SceneContainer &>(scene) = ContainerFields::read(reader, root, QString(), keys);
        if (root.contains(front)) {
            reader.addError(QString(), front, SceneReaderText::tr("no such field without \"containers\""));
        }
        return;
    }
    const QStringList singles = ContainerFields::namesInScene();
    for (const QString &single : singles) {
        if (root.contains(single)) {
            reader.addError(QString(), single,
                            SceneReaderText::tr("no such field beside \"containers\", whose entries have it"));
        }
    }
    const QList<QJsonObject> containers = reader.objects(root, QString(), name, true);
    if (containers.isEmpty() || containers.size() > Scene::maximumContainers) {
        reader.addError(QString(), name, SceneReaderText::tr("1 to %1 containers").arg(Scene::maximumContainers));
    }
    for (int i = 0; i < containers.size(); ++i) {
        const SceneContainer container =
            ContainerFields::readListed(reader, containers.at(i), FieldReader::placeOf(QString(), name, i), keys);
        if (i == 0) {
            static_cast<SceneContainer &>(scene) = container;
        } else {
            scene.furtherContainers.append(container);
        }
    }
    scene.frontContainer = int(reader.integer(root, QString(), front, 1, qMax(1, containers.size()), 1)) - 1;
}

WindowLayout readLayout(FieldReader &reader, const QJsonObject &root)
{
    const QString name = QStringLiteral("window");
    const QString docks = QStringLiteral("docks");
    const QJsonObject object = reader.object(root, QString(), name, false);
    reader.allowOnly(object, name,
                     {QStringLiteral("width"), QStringLiteral("height"), QStringLiteral("maximised"), docks});
    WindowLayout layout;
    const int width = int(reader.integer(object, name, QStringLiteral("width"), 1, WindowPlace::maximumSide, -1));
    const int height = int(reader.integer(object, name, QStringLiteral("height"), 1, WindowPlace::maximumSide, -1));
    layout.size = QSize(width, height);
    layout.isMaximised = reader.boolean(object, name, QStringLiteral("maximised"), false);
    const QByteArray text = reader.text(object, name, docks, QString()).toLatin1();
    layout.docks = QByteArray::fromBase64(text);
    if (layout.docks.toBase64() != text) { // what is no base64 is skipped
        reader.addError(name, docks, SceneReaderText::tr("a text in base64, as the workbench has written it"));
    }
    return layout;
}

SceneResult sceneOf(const JsonResult &json, const QString &fileName)
{
    if (!json.error.isEmpty()) {
        return {{}, json.error, {json.error}};
    }
    const QJsonObject &root = json.object;
    FieldReader reader(fileName);
    reader.allowOnly(root, QString(),
                     QStringList{QStringLiteral("title"), QStringLiteral("seed"), QStringLiteral("modules"),
                                 QStringLiteral("containers"), QStringLiteral("frontContainer"),
                                 QStringLiteral("window")} +
                         ContainerFields::namesInScene());
    SceneResult result;
    Scene &scene = result.scene;
    scene.title = reader.text(root, QString(), QStringLiteral("title"));
    scene.seed = quint32(
        reader.integer(root, QString(), QStringLiteral("seed"), 0, std::numeric_limits<quint32>::max(), scene.seed));
    const ContainerFields::Keys keys = readModules(reader, root, scene);
    readContainers(reader, root, keys, scene);
    scene.layout = readLayout(reader, root);
    result.errors = reader.errors();
    result.error = reader.error();
    return result;
}

} // namespace

SceneResult readScene(const QByteArray &json, const QString &fileName)
{
    return sceneOf(readJsonText(json, fileName), fileName);
}

SceneResult readSceneFile(const QString &path)
{
    initSceneResources();
    SceneResult result = sceneOf(readJsonFile(path, maximumSceneBytes), path);
    const QString folder = QFileInfo(path).absolutePath();
    resolveMapFiles(result.scene.modules, folder);
    resolveRecordings(result.scene.modules, folder);
    return result;
}

QStringList shippedScenes()
{
    initSceneResources();
    QStringList names;
    const QStringList files =
        QDir(QStringLiteral(":/scenes")).entryList({QStringLiteral("*.json")}, QDir::Files, QDir::Name);
    for (const QString &file : files) {
        names.append(file.chopped(int(qstrlen(".json"))));
    }
    return names;
}

QString shippedScenePath(const QString &name)
{
    return QStringLiteral(":/scenes/%1.json").arg(name);
}

QString startScenePath()
{
    return QStringLiteral(":/start/start.json");
}
