#include "window/HelpMenu.h"

#include "window/OpenedPath.h"
#include "window/ShortcutList.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QMessageBox>
#include <QStyle>
#include <QWhatsThis>

HelpMenu::HelpMenu(QWidget *window) : QMenu(window), m_window(window)
{
    setTitle(tr("&Help"));
    QAction *const guide = add(tr("&Guide"), tr("Open the guide in the language of the program"));
    guide->setShortcut(QKeySequence(QKeySequence::HelpContents));
    connect(guide, &QAction::triggered, this, &HelpMenu::openGuide);
    QAction *const keys = add(tr("&Keyboard Shortcuts"), tr("List all keys of the workbench"));
    keys->setShortcut(QKeySequence(QStringLiteral("Ctrl+F1")));
    connect(keys, &QAction::triggered, this, [this] { (new ShortcutList(m_window))->open(); });
    QAction *const whatsThis = QWhatsThis::createAction(this);
    whatsThis->setStatusTip(tr("Click something to read what it is for"));
    whatsThis->setWhatsThis(whatsThis->statusTip());
    addAction(whatsThis);
    addSeparator();
    QAction *const about = add(tr("&About"), tr("Show version, licences and the version of Qt"));
    about->setMenuRole(QAction::AboutRole);
    connect(about, &QAction::triggered, this, &HelpMenu::showAbout);
}

QString HelpMenu::guidePage(const QString &language)
{
    const QDir program(QCoreApplication::applicationDirPath());
    for (const char *const folder : {INSTALLED_GUIDE_FOLDER, "../guide"}) {
        for (const QString &code : {language, QStringLiteral("en")}) {
            const QString page = QStringLiteral("%1/%2/user-guide.html").arg(QLatin1String(folder), code);
            if (QFileInfo::exists(program.filePath(page))) {
                return QFileInfo(program.filePath(page)).canonicalFilePath();
            }
        }
    }
    return {};
}

void HelpMenu::openGuide()
{
    //: The code of the language that this is translated to.
    const QString page = guidePage(tr("en"));
    if (page.isEmpty()) {
        qWarning("The guide is not installed");
        return;
    }
    OpenedPath::open(page);
}

void HelpMenu::showAbout()
{
    auto *const box = new QMessageBox(QMessageBox::NoIcon, tr("About"), QString(), QMessageBox::Close, m_window);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setIconPixmap(QApplication::windowIcon().pixmap(box->style()->pixelMetric(QStyle::PM_LargeIconSize)));
    box->setTextFormat(Qt::PlainText);
    box->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    box->setText(tr("XY Plot Workbench %1").arg(QStringLiteral(PROGRAM_VERSION)));
    box->setInformativeText(
        tr("A stand-in host for container plugins, with modules that are simulated, real or "
           "played back.\n\nLicence: %1\nQt %2 (GNU LGPL 3), built with %3\nlibmodbus (GNU LGPL 2.1)")
            .arg(QStringLiteral("MIT"), QString::fromLatin1(qVersion()), QStringLiteral(QT_VERSION_STR)));
    box->open();
}

QAction *HelpMenu::add(const QString &text, const QString &tip)
{
    QAction *const newAction = addAction(text);
    newAction->setStatusTip(tip);
    newAction->setWhatsThis(tip);
    return newAction;
}
