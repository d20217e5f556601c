#include "window/AppearanceMenu.h"

#include "window/Palettes.h"
#include "window/Preferences.h"

#include <QAction>
#include <QActionGroup>
#include <QLocale>
#include <QMainWindow>
#include <QMenu>
#include <QStatusBar>

namespace
{

constexpr int noticeTimeMs = 10000;

/// The name of the language, in the language itself.
QString ownName(const QString &code)
{
    // Qt would name the country as well: "American English".
    return code == QLatin1String("en") ? QStringLiteral("English") : QLocale(code).nativeLanguageName();
}

QAction *addChoice(QMenu *menu, QActionGroup *group, const QString &text, const QString &statusTip, bool isChosen)
{
    QAction *const action = menu->addAction(text);
    action->setCheckable(true);
    action->setChecked(isChosen);
    action->setStatusTip(statusTip);
    group->addAction(action);
    return action;
}

} // namespace

AppearanceMenu::AppearanceMenu(QMainWindow *window, QMenu *viewMenu, const QStringList &languages)
    : QObject(window), m_window(window)
{
    viewMenu->addSeparator();
    addPalettes(viewMenu);
    addLanguages(viewMenu, languages);
}

void AppearanceMenu::addPalettes(QMenu *viewMenu)
{
    QMenu *const menu = viewMenu->addMenu(tr("&Palette"));
    menu->menuAction()->setStatusTip(tr("Choose the colours of the windows"));
    auto *const group = new QActionGroup(menu);
    const auto add = [&](PaletteChoice choice, const QString &text, const QString &statusTip) {
        QAction *const action = addChoice(menu, group, text, statusTip, currentPalette() == choice);
        connect(action, &QAction::triggered, this, [choice] {
            applyPalette(choice);
            Preferences::setPalette(choice);
        });
    };
    add(PaletteChoice::System, tr("&System"), tr("Style and colours of the desktop"));
    add(PaletteChoice::Light, tr("&Light"), tr("Dark on light"));
    add(PaletteChoice::Dark, tr("&Dark"), tr("Light on dark"));
}

void AppearanceMenu::addLanguages(QMenu *viewMenu, const QStringList &languages)
{
    QMenu *const menu = viewMenu->addMenu(tr("&Language"));
    menu->menuAction()->setStatusTip(tr("Choose the language of the program from the next start on"));
    auto *const group = new QActionGroup(menu);
    const auto add = [&](const QString &code, const QString &text, const QString &statusTip) {
        QAction *const action = addChoice(menu, group, text, statusTip, Preferences::language() == code);
        connect(action, &QAction::triggered, this, [this, code] {
            Preferences::setLanguage(code);
            m_window->statusBar()->showMessage(tr("The language changes at the next start."), noticeTimeMs);
        });
    };
    add(QString(), tr("As the &System"), tr("The system's language, from the next start on"));
    for (const QString &code : languages) {
        const QString name = ownName(code);
        add(code, name, tr("%1, from the next start on").arg(name));
    }
}
