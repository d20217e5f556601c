#pragma once

#include "application/Options.h"

#include <QImage>
#include <QString>
#include <QTemporaryDir>

class ContainerInterface;
class MainWindow;
class Terminal;

/**
 * Looks whether an installed workbench is complete and works: plugins, drawings, a scene, its picture and its log.
 *
 * Prints one line for each check to the standard output as soon as it is known. GUI thread.
 */
class SelfTest
{
public:
    /// \param terminal gets the lines; not owned, has to outlive this
    explicit SelfTest(const Terminal &terminal);

    /// \a options with a scene, its length, a picture and a log in a folder that is thrown away, where none were given.
    Options completed(Options options) const;

    /// Prints a check and remembers when it failed; returns \a isPassed. \a what is a line without its end.
    bool check(bool isPassed, const QString &what);
    bool hasFailed() const;

    /// Whether drawings show, of which the widgets' style has one: what draws them is loaded when it is needed.
    void checkDrawings();

    /// Notes what \a container looks like before its curves have points.
    void noteEmptyPlot(ContainerInterface *container);

    /// Whether the picture at \a path shows the container with \a curves curves that were not there before.
    void checkPicture(const QString &path, int curves);

    /// Whether the file at \a path holds whole, well-formed and consecutive lines, \a lines of them below its header.
    void checkLog(const QString &path, int curves, int lines);

    /// Whether a container opens and shows something.
    void checkContainer(MainWindow &window, ContainerInterface *container);

private:
    Q_DISABLE_COPY(SelfTest)

    const Terminal &m_terminal;
    QTemporaryDir m_folder;
    QImage m_emptyPlot;
    bool m_hasFailed = false;
};
