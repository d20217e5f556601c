#include "setup/SceneReader.h"

#include "modules/simulation/ModuleKind.h"
#include "reading/FieldReader.h"
#include "reading/TextLists.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QJsonDocument>

#include <limits>

// Outside of any namespace, as the resource compiler's functions are.
static void initSceneResources()
{
    Q_INIT_RESOURCE(scenes); // a static library's resources are not linked in unless they are initialised
}

namespace
{

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(SceneReader)
};

MotionProgram readMotion(FieldReader &reader, const QJsonObject &axis, const QString &place)
{
    static const QMap<QString, MotionProgram::Kind> kinds = {
        {QStringLiteral("hold"), MotionProgram::Kind::Hold},
        {QStringLiteral("reciprocate"), MotionProgram::Kind::Reciprocate},
        {QStringLiteral("sine"), MotionProgram::Kind::Sine},
    };
    MotionProgram motion;
    const QString kind = reader.text(axis, place, QStringLiteral("motion"));
    if (!kinds.contains(kind)) {
        reader.addError(place, QStringLiteral("motion"), Text::tr("one of %1").arg(quotedList(kinds.keys())));
    }
    motion.kind = kinds.value(kind);
    motion.amplitude = reader.number(axis, place, QStringLiteral("amplitude"), motion.amplitude);
    motion.periodSeconds = reader.number(axis, place, QStringLiteral("periodSeconds"), motion.periodSeconds);
    motion.phaseDegrees = reader.number(axis, place, QStringLiteral("phaseDegrees"), motion.phaseDegrees);
    motion.offset = reader.number(axis, place, QStringLiteral("offset"), motion.offset);
    if (motion.amplitude < 0.0) {
        reader.addError(place, QStringLiteral("amplitude"), Text::tr("a number of microsteps, 0 or more"));
    }
    if (motion.periodSeconds <= 0.0) {
        reader.addError(place, QStringLiteral("periodSeconds"), Text::tr("a number of seconds above 0"));
    }
    return motion;
}

QStringList kindNames()
{
    QStringList names;
    for (const ModuleKind &kind : simulatedModuleKinds()) {
        names.append(QString::fromUtf8(kind.name));
    }
    return names;
}

/// Which axes a kind of module has to offer, for a person.
QString expectedAxis(const QString &kind, int axes)
{
    if (axes == 0) {
        return Text::tr("no motion, because %1 has no axes").arg(kind);
    }
    return axes == 1 ? Text::tr("0, because %1 has this axis only").arg(kind)
                     : Text::tr("a whole number from 0 to %1, the axes of %2").arg(axes - 1).arg(kind);
}

ModuleSettings readModule(FieldReader &reader, const QJsonObject &object, const QString &place)
{
    reader.allowOnly(object, place, {QStringLiteral("kind"), QStringLiteral("key"), QStringLiteral("axes")});
    SimulationSettings simulation;
    simulation.kind = reader.text(object, place, QStringLiteral("kind"));
    const QString key = reader.text(object, place, QStringLiteral("key"));
    const ModuleKind *const kind = findModuleKind(simulation.kind);
    if (kind == nullptr) {
        reader.addError(place, QStringLiteral("kind"), Text::tr("one of %1").arg(quotedList(kindNames())));
    }
    const int axisCount = kind == nullptr ? 0 : int(kind->axes.size());
    const QList<QJsonObject> axes = reader.objects(object, place, QStringLiteral("axes"), false);
    for (int i = 0; i < axes.size(); ++i) {
        const QString axisPlace = FieldReader::placeOf(place, QStringLiteral("axes"), i);
        reader.allowOnly(axes.at(i), axisPlace,
                         {QStringLiteral("axis"), QStringLiteral("motion"), QStringLiteral("amplitude"),
                          QStringLiteral("periodSeconds"), QStringLiteral("phaseDegrees"), QStringLiteral("offset")});
        using Limits = std::numeric_limits<int>;
        const int axis =
            int(reader.integer(axes.at(i), axisPlace, QStringLiteral("axis"), Limits::min(), Limits::max(), i));
        if (axis < 0 || axis >= axisCount) {
            reader.addError(axisPlace, QStringLiteral("axis"), expectedAxis(simulation.kind, axisCount));
        }
        if (simulation.motions.contains(axis)) {
            reader.addError(axisPlace, QStringLiteral("axis"), Text::tr("an axis that has no motion yet"));
        }
        simulation.motions.insert(axis, readMotion(reader, axes.at(i), axisPlace));
    }
    return {key, simulation};
}

SceneSource readSource(FieldReader &reader, const QJsonObject &object, const QString &place, const Scene &scene)
{
    reader.allowOnly(
        object, place,
        {QStringLiteral("module"), QStringLiteral("motor"), QStringLiteral("value"), QStringLiteral("signed")});
    SceneSource source;
    source.module = reader.text(object, place, QStringLiteral("module"));
    source.motor = reader.text(object, place, QStringLiteral("motor"), QString()).trimmed();
    source.value = reader.text(object, place, QStringLiteral("value")).trimmed();
    source.isSigned = reader.boolean(object, place, QStringLiteral("signed"), false);
    QStringList keys;
    for (const ModuleSettings &module : scene.modules) {
        keys.append(module.key);
    }
    if (!keys.contains(source.module)) {
        reader.addError(place, QStringLiteral("module"),
                        Text::tr("the key of one of the scene's modules: %1").arg(quotedList(keys)));
    }
    return source;
}

void readModules(FieldReader &reader, const QJsonObject &root, Scene &scene)
{
    const QList<QJsonObject> modules = reader.objects(root, QString(), QStringLiteral("modules"), true);
    QStringList keys;
    for (int i = 0; i < modules.size(); ++i) {
        const QString place = FieldReader::placeOf(QString(), QStringLiteral("modules"), i);
        scene.modules.append(readModule(reader, modules.at(i), place));
        if (keys.contains(scene.modules.constLast().key)) {
            reader.addError(place, QStringLiteral("key"), Text::tr("a key that no other module has"));
        }
        keys.append(scene.modules.constLast().key);
    }
}

void readCurves(FieldReader &reader, const QJsonObject &root, Scene &scene)
{
    const QString name = QStringLiteral("curves");
    const QList<QJsonObject> curves = reader.objects(root, QString(), name, true);
    if (curves.size() > Scene::maximumCurves) {
        reader.addError(QString(), name, Text::tr("at most %1 curves").arg(Scene::maximumCurves));
    }
    const auto requireSameModule = [&](const QString &place, const QString &module, const QString &first) {
        if (module != first) {
            reader.addError(
                place, QStringLiteral("module"),
                Text::tr("\"%1\" as for the first curve, because all curves share one module per side").arg(first));
        }
    };
    for (int i = 0; i < curves.size(); ++i) {
        const QString place = FieldReader::placeOf(QString(), name, i);
        const QString placeX = FieldReader::placeOf(place, QStringLiteral("x"));
        const QString placeY = FieldReader::placeOf(place, QStringLiteral("y"));
        reader.allowOnly(curves.at(i), place, {QStringLiteral("x"), QStringLiteral("y")});
        SceneCurve curve;
        curve.x = readSource(reader, reader.object(curves.at(i), place, QStringLiteral("x"), true), placeX, scene);
        curve.y = readSource(reader, reader.object(curves.at(i), place, QStringLiteral("y"), true), placeY, scene);
        scene.curves.append(curve);
        requireSameModule(placeX, curve.x.module, scene.curves.constFirst().x.module);
        requireSameModule(placeY, curve.y.module, scene.curves.constFirst().y.module);
    }
}

void readOptions(FieldReader &reader, const QJsonObject &root, Scene &scene)
{
    const QString name = QStringLiteral("options");
    const QJsonObject options = reader.object(root, QString(), name, false);
    reader.allowOnly(options, name, {QStringLiteral("lines"), QStringLiteral("square"), QStringLiteral("showAll")});
    scene.showsLines = reader.boolean(options, name, QStringLiteral("lines"), scene.showsLines);
    scene.isSquare = reader.boolean(options, name, QStringLiteral("square"), scene.isSquare);
    scene.showsAll = reader.boolean(options, name, QStringLiteral("showAll"), scene.showsAll);
}

/// What is wrong with the text itself, as "file:line: ...".
QString syntaxError(const QByteArray &json, const QJsonParseError &error, const QString &fileName)
{
    const int line = 1 + json.left(error.offset).count('\n');
    return Text::tr("%1:%2: expected JSON: %3").arg(fileName).arg(line).arg(error.errorString());
}

} // namespace

SceneResult readScene(const QByteArray &json, const QString &fileName)
{
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(json, &parseError);
    SceneResult result;
    if (parseError.error != QJsonParseError::NoError) {
        result.error = syntaxError(json, parseError, fileName);
        return result;
    }
    if (!document.isObject()) {
        result.error = Text::tr("%1: expected an object in braces").arg(fileName);
        return result;
    }
    const QJsonObject root = document.object();
    FieldReader reader(fileName);
    reader.allowOnly(root, QString(),
                     {QStringLiteral("title"), QStringLiteral("seed"), QStringLiteral("modules"),
                      QStringLiteral("curves"), QStringLiteral("options")});
    Scene &scene = result.scene;
    scene.title = reader.text(root, QString(), QStringLiteral("title"));
    scene.seed = quint32(
        reader.integer(root, QString(), QStringLiteral("seed"), 0, std::numeric_limits<quint32>::max(), scene.seed));
    readModules(reader, root, scene);
    readCurves(reader, root, scene);
    readOptions(reader, root, scene);
    result.error = reader.error();
    return result;
}

SceneResult readSceneFile(const QString &path)
{
    initSceneResources();
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return {{}, Text::tr("%1: cannot read the scene file: %2").arg(path, file.errorString())};
    }
    return readScene(file.readAll(), path);
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
