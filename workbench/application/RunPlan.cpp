#include "application/RunPlan.h"

#include "application/PluginFolders.h"
#include "application/TimedRun.h"
#include "setup/SceneReader.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace
{

constexpr double defaultRunSeconds = 5.0;
constexpr QSize defaultPictureSize(1000, 600); // wide enough for a square plot beside the tables

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(RunPlan)
};

QString absolute(const QString &path)
{
    return path.isEmpty() ? QString() : QFileInfo(path).absoluteFilePath();
}

/// Where the scene is that was asked for, or the one to start with; empty when nothing bears that name.
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

} // namespace

RunPlanResult planRun(const Options &options, bool isHeadless)
{
    RunPlanResult result;
    RunPlan &plan = result.plan;
    plan.isTimed = isHeadless || options.seconds || !options.picture.isEmpty() || !options.log.isEmpty();
    plan.isSelfTest = options.wantsSelfTest;
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
    const bool wantsPicture = plan.isTimed && (plan.log.isEmpty() || !options.picture.isEmpty());
    plan.picture =
        absolute(options.picture.isEmpty() && wantsPicture ? QStringLiteral("xy-plot.png") : options.picture);

    const QString name = options.scene.isEmpty() && plan.isTimed ? QStringLiteral("circle") : options.scene;
    plan.hasScene = !name.isEmpty();
    const QString path = scenePath(name);
    if (path.isEmpty()) {
        result.error = Text::tr("no scene and no file is called \"%1\"; the scenes are: %2")
                           .arg(name, shippedScenes().join(QStringLiteral(", ")));
        result.exitCode = RunPlanResult::exitUsage;
        return result;
    }
    const SceneResult scene = readSceneFile(path);
    plan.scene = scene.scene;
    result.error = scene.error;
    for (const QString &file : {plan.picture, plan.log}) {
        if (result.error.isEmpty() && !file.isEmpty()) {
            result.error = TimedRun::problemWith(file);
        }
    }
    result.exitCode = result.error.isEmpty() ? 0 : RunPlanResult::exitFailure;
    return result;
}
