#include "application/Language.h"

#include <QCoreApplication>
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

void Language::use(const QString &code)
{
    if (code == QLatin1String("en")) {
        return;
    }
    initTranslationResources();
    install(QStringLiteral("qtbase_") + code, QLibraryInfo::location(QLibraryInfo::TranslationsPath));
    install(QStringLiteral("xy-plot-workbench_") + code, QStringLiteral(":/translations"));
}
