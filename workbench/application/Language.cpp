#include "application/Language.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

#include <memory>

// Outside of any namespace, as the resource compiler's functions are.
static void initTranslationResources()
{
    Q_INIT_RESOURCE(translations); // a static library's resources are not linked in unless they are initialised
}

namespace
{

QString &currentCode()
{
    static QString code = QStringLiteral("en");
    return code;
}

/// Numbers follow the language, too, where it is not the system's: one window shows one meaning of a dot.
void useForNumbers(const QString &code)
{
    const QLocale::Language system = QLocale::system().language();
    const QLocale wanted(code);
    const bool isPlain = system == QLocale::C && code == QLatin1String("en");
    if (system != wanted.language() && !isPlain) {
        QLocale::setDefault(wanted);
    }
}

void install(const QString &name, const QString &folder)
{
    auto translator = std::make_unique<QTranslator>(QCoreApplication::instance());
    if (translator->load(name, folder)) {
        QCoreApplication::installTranslator(translator.release());
    }
}

} // namespace

QStringList Language::codes()
{
    return {QStringLiteral("de"), QStringLiteral("en")};
}

QString Language::ofSystem()
{
    const QStringList wanted = QLocale::system().uiLanguages();
    for (const QString &language : wanted) {
        QString code = language.left(2);
        if (codes().contains(code)) {
            return code;
        }
    }
    return QStringLiteral("en");
}

QString Language::current()
{
    return currentCode();
}

void Language::use(const QString &code)
{
    currentCode() = code;
    useForNumbers(code);
    if (code == QLatin1String("en")) {
        return;
    }
    initTranslationResources();
    install(QStringLiteral("qtbase_") + code, QLibraryInfo::location(QLibraryInfo::TranslationsPath));
    for (const char *const name : {"host_", "xy-plot-workbench_"}) {
        install(QLatin1String(name) + code, QStringLiteral(":/translations"));
    }
}

void Language::useForPlugin(const QString &path)
{
    const QFileInfo file(QFileInfo(path).canonicalFilePath()); // a link may be in a folder of links
    const QString folder = file.absolutePath() + QStringLiteral("/translations");
    const QString name = QStringLiteral("%1_%2.qm").arg(file.completeBaseName(), current());
    // Not left to the translator, which would go on with shorter names: those of other plugins.
    if (QFileInfo::exists(folder + QLatin1Char('/') + name)) {
        install(name, folder);
    }
}
