#include "application/RunPlan.h"

#include "application/PluginFolders.h"
#include "logging/WriteObstacle.h"
#include "modules/recording/RecordingFile.h"
#include "setup/DeviceScene.h"
#include "setup/RecordingCurves.h"
#include "setup/SceneReader.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace
{

constexpr double defaultRunSeconds = 5.0;
constexpr QSize defaultPictureSize(1000, 600); // wide enough for a square plot beside the tables

struct RunPlanText
{
    Q_DECLARE_TR_FUNCTIONS(RunPlan)
};

QString absolute(const QString &path)
{
    return path.isEmpty() ? QString() : QFileInfo(path).absoluteFilePath();
}

/// The path of the scene called \a name, or of the start scene when it is empty; empty when there is no such scene.
QString scenePath(const QString &name)
{
    if (name.isEmpty()) {
        return startScenePath();
    }
    if (shippedScenes().contains(name)) {
        return shippedScenePath(name);
    }
    return QFileInfo::exists(name) ? name : QString();
}

/// What is wrong with the files that the run is to write, and the exit code for it.
void checkFiles(const RunPlan &plan, RunPlanResult &result)
{
    const QList<QPair<QString, QString>> files = {{QStringLiteral("--log"), plan.log},
                                                  {QStringLiteral("--picture"), plan.picture},
                                                  {QStringLiteral("--settings"), plan.settings}};
    for (int i = 0; i < files.size(); ++i) {
        const QString &path = files.at(i).second;
        if (path.isEmpty()) {
            continue;
        }
        for (int j = 0; j < i; ++j) {
            if (!files.at(j).second.isEmpty() && isSameFile(path, files.at(j).second)) {
                result.error = RunPlanText::tr("%1 and %2 lead to the same file: %3")
                                   .arg(files.at(j).first, files.at(i).first, path);
                result.exitCode = RunPlanResult::exitUsage;
                return;
            }
        }
        // A log is written on and on; the others are written beside the file that they then replace.
        const QString obstacle = i == 0 ? writeObstacle(path) : replaceObstacle(path);
        if (!obstacle.isEmpty()) {
            result.error = RunPlanText::tr("%1: cannot save there: %2").arg(path, obstacle);
            result.exitCode = RunPlanResult::exitFailure;
            return;
        }
    }
}

/// Adds the module of the recording to the scene, and its curves unless a scene was asked for.
void addRecording(const QString &path, RunPlanResult &result)
{
    RunPlan &plan = result.plan;
    const QList<QPair<QString, QString>> written = {{QStringLiteral("--log"), plan.log},
                                                    {QStringLiteral("--picture"), plan.picture},
                                                    {QStringLiteral("--settings"), plan.settings}};
    for (const auto &[name, target] : written) {
        if (!target.isEmpty() && isSameFile(target, path)) {
            result.error =
                RunPlanText::tr("%1 and %2 lead to the same file: %3").arg(QStringLiteral("--recording"), name, path);
            result.exitCode = RunPlanResult::exitUsage;
            return;
        }
    }
    const RecordingFile::Result opened = RecordingFile::open(path);
    if (opened.file == nullptr) {
        result.error = opened.error;
        result.exitCode = RunPlanResult::exitFailure;
        return;
    }
    Scene &scene = plan.scene;
    QStringList keys;
    for (const ModuleSettings &module : qAsConst(scene.modules)) {
        keys.append(module.key);
    }
    RecordingSettings settings;
    settings.file = opened.file->path();
    const QString key = recordingKey(settings.file, keys);
    scene.modules.append({key, settings});
    plan.hasScene = true;
    if (!plan.isSceneAsked) {
        plan.isSceneAsked = true;
        scene.curves = recordingCurves(opened.file->columns(), key);
        scene.title = QFileInfo(settings.file).fileName();
    }
}

bool isTimed(const Options &options, bool isHeadless)
{
    return isHeadless || options.wantsSelfTest || options.seconds || !options.picture.isEmpty() ||
           !options.log.isEmpty();
}

/// Adds \a devices to the scene; \a areAlone: in place of the modules that a workbench begins with.
void addDeviceModules(const QList<DeviceSettings> &devices, bool areAlone, RunPlanResult &result)
{
    if (areAlone) {
        result.plan.scene.modules.clear();
    }
    result.error = addDevices(result.plan.scene, devices);
    result.exitCode = result.error.isEmpty() ? 0 : RunPlanResult::exitFailure;
}

} // namespace

bool keepsState(const Options &options, bool isHeadless)
{
    return !isTimed(options, isHeadless) &&
           ((options.scene.isEmpty() && options.recording.isEmpty()) || !options.settings.isEmpty());
}

RunPlanResult planRun(const Options &options, bool isHeadless)
{
    RunPlanResult result;
    RunPlan &plan = result.plan;
    plan.isTimed = isTimed(options, isHeadless);
    plan.keepsState = keepsState(options, isHeadless);
    plan.seconds = options.seconds.value_or(defaultRunSeconds);
    plan.size = options.size.isValid() || !plan.isTimed ? options.size : defaultPictureSize;
    plan.plugins = PluginFolders::files(options.plugins);
    if (plan.plugins.isEmpty()) {
        result.error = PluginFolders::noFilesText(options.plugins);
        result.exitCode = RunPlanResult::exitFailure;
        return result;
    }
    plan.requiredPlugins = options.plugins.isEmpty() ? 1 : plan.plugins.size();
    plan.log = absolute(options.log);
    plan.settings = absolute(options.settings);
    const bool wantsPicture = plan.isTimed && (plan.log.isEmpty() || !options.picture.isEmpty());
    plan.picture =
        absolute(options.picture.isEmpty() && wantsPicture ? QStringLiteral("xy-plot.png") : options.picture);

    // In a window a file is opened as by the menu, with all that is kept between runs.
    const bool isCsv = options.file.endsWith(QLatin1String(".csv"), Qt::CaseInsensitive);
    const bool isFileRecording = plan.isTimed && isCsv;
    const QString recording = options.recording.isEmpty() && isFileRecording ? options.file : options.recording;
    const bool isFileScene = !isCsv && (plan.isTimed || !options.devices.isEmpty());
    plan.openFile = plan.isTimed || isFileScene ? QString() : absolute(options.file);
    const QString asked = isFileScene && !options.file.isEmpty() ? options.file : options.scene;
    const bool isOfDevices = asked.isEmpty() && !options.devices.isEmpty();
    plan.isSceneAsked = !asked.isEmpty() || isOfDevices;
    const bool needsScene = plan.isTimed && !isOfDevices && recording.isEmpty();
    const QString name = asked.isEmpty() && needsScene ? QStringLiteral("circle") : asked;
    plan.hasScene = !name.isEmpty() || isOfDevices;
    const QString path = scenePath(name);
    plan.scenePath = path;
    if (path.isEmpty()) {
        result.error = RunPlanText::tr("no scene and no file is called \"%1\"; the scenes are: %2")
                           .arg(name, shippedScenes().join(QStringLiteral(", ")));
        result.exitCode = RunPlanResult::exitUsage;
        return result;
    }
    const SceneResult scene = readSceneFile(path);
    plan.scene = scene.scene;
    plan.scene.seed = options.seed.value_or(scene.scene.seed);
    if (!scene.error.isEmpty()) {
        result.error = scene.error;
        result.exitCode = RunPlanResult::exitFailure;
        return result;
    }
    addDeviceModules(options.devices, isOfDevices, result);
    if (result.error.isEmpty() && !recording.isEmpty()) {
        addRecording(absolute(recording), result);
    }
    if (result.error.isEmpty()) {
        checkFiles(plan, result);
    }
    return result;
}
