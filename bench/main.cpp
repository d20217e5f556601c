#include "GuardedTest.h"
#include "Reports.h"
#include "TimedApplication.h"

#include "host/AppSettings.h"

#include <QCommandLineParser>
#include <QFile>
#include <QTextStream>

namespace
{

/// Leaves out what the log line says, what the offscreen platform cannot do, and the slots that a form alone lacks.
void showMessages(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    Q_UNUSED(context)
    const bool isExpected = type == QtDebugMsg || text.startsWith(QStringLiteral("This plugin does not support ")) ||
                            text.startsWith(QStringLiteral("QObject::connect: "));
    if (!isExpected) {
        QTextStream(stderr) << text << '\n';
    }
}

QString missing()
{
    QStringList names;
#ifndef HAVE_QWT
    names.append(QStringLiteral("Qwt"));
#endif
#ifndef HAVE_QCUSTOMPLOT
    names.append(QStringLiteral("QCustomPlot"));
#endif
    return names.isEmpty() ? QString()
                           : names.join(QStringLiteral(" and ")) + QStringLiteral(" missing: not compared.\n");
}

bool write(const QString &path, const QString &text)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        QTextStream(stderr) << path << ": " << file.errorString() << '\n';
        return false;
    }
    file.write(text.toUtf8());
    return true;
}

} // namespace

int main(int argc, char **argv)
{
    prepareTestEnvironment();
    TimedApplication application(argc, argv);
    prepareTestApplication();
    qInstallMessageHandler(showMessages);
    const QTemporaryDir folder;
    AppSettings::setStoreFile(folder.filePath(QStringLiteral("settings.ini")));

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Measures the plot beside other plot widgets."));
    parser.addHelpOption();
    const QCommandLineOption quick(QStringLiteral("quick"), QStringLiteral("Few rounds, four curves only."));
    const QCommandLineOption only(
        QStringLiteral("only"),
        QStringLiteral("Only \"samples\", \"shares\", \"growth\", \"plugin\" or \"comparison\"."),
        QStringLiteral("chapter"));
    const QCommandLineOption docs(QStringLiteral("docs"),
                                  QStringLiteral("Writes performance.md and its picture there."),
                                  QStringLiteral("folder"));
    const QCommandLineOption before(QStringLiteral("before"),
                                    QStringLiteral("Shows the samples of an earlier version beside; see --save."),
                                    QStringLiteral("file"));
    const QCommandLineOption save(QStringLiteral("save"), QStringLiteral("Keeps the samples for --before."),
                                  QStringLiteral("file"));
    parser.addOptions({quick, only, docs, before, save});
    parser.process(application);

    Effort effort;
    if (parser.isSet(quick)) {
        effort = {3, 9, 150, 2000, 100};
    }
    const QString chapter = parser.value(only);
    const auto isWanted = [&chapter](const QString &name) { return chapter.isEmpty() || chapter == name; };
    const QString picture = parser.isSet(docs) ? parser.value(docs) + QStringLiteral("/performance.png") : QString();
    QString text = QStringLiteral("# How fast the plot is drawn\n\nWritten by `bench/run --docs docs`; numbers of one "
                                  "machine, to be read as ratios.\n");
    text += missing();
    QTextStream(stdout) << missing();
    if (isWanted(QStringLiteral("samples"))) {
        text += QStringLiteral("\n## What sampling loses by the plot\n\n") +
                Reports::samples(!parser.isSet(quick), parser.value(before), parser.value(save));
    }
    if (isWanted(QStringLiteral("shares"))) {
        text += QStringLiteral("\n## Where the time goes\n\n") + Reports::shares(effort);
    }
    if (isWanted(QStringLiteral("growth"))) {
        text += QStringLiteral("\n## As the work grows\n\n![One redraw, drawn by the plot itself](performance.png)\n") +
                Reports::growth(effort, picture);
    }
    if (isWanted(QStringLiteral("plugin"))) {
        text += QStringLiteral("\n## The plugin\n\n") + Reports::plugin(effort);
    }
    if (isWanted(QStringLiteral("comparison"))) {
        text += QStringLiteral("\n## Beside other plots\n\n") + Reports::comparison(effort, !parser.isSet(quick));
    }
    if (parser.isSet(docs) && !write(parser.value(docs) + QStringLiteral("/performance.md"), text)) {
        return 1;
    }
    return 0;
}
