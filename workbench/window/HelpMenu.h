#pragma once

#include <QMenu>

/**
 * Guide, keys, What's This and About.
 *
 * The guide is opened by the program that the desktop has for it. Its pages are found beside the program, be it
 * installed or in the folder where it was built. GUI thread.
 */
class HelpMenu : public QMenu
{
    Q_OBJECT

public:
    /// \param window whose keys are listed and which is the parent of the dialogs
    explicit HelpMenu(QWidget *window);

    /// The guide's page in \a language ("de"), in English when there is none; empty when no guide is installed.
    static QString guidePage(const QString &language);

private:
    void openGuide();
    void showAbout();
    QAction *add(const QString &text, const QString &tip);

    QWidget *const m_window; // not owned
};
