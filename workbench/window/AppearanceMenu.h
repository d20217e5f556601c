#pragma once

#include <QObject>
#include <QStringList>

class QActionGroup;
class QMainWindow;
class QMenu;

/**
 * The choice of colours and language in the View menu; both are kept between runs. Colours change at once, the language
 * at the next start. Owned by the window. GUI thread.
 */
class AppearanceMenu : public QObject
{
    Q_OBJECT

public:
    /**
     * \param viewMenu  gets the two menus
     * \param languages codes of the languages that the program has
     */
    AppearanceMenu(QMainWindow *window, QMenu *viewMenu, const QStringList &languages);

private:
    void addPalettes(QMenu *viewMenu);
    void addLanguages(QMenu *viewMenu, const QStringList &languages);

    QMainWindow *const m_window; // the owner
};
