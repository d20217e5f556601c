#include "GrowingPlot.h"
#include "setup/ChoiceReader.h"
#include "setup/SceneWriter.h"
#include "window/FileMenu.h"
#include "window/RecentFiles.h"
#include "window/SceneExchange.h"

#include <QComboBox>
#include <QDockWidget>
#include <QDropEvent>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>

#include <sys/stat.h>

using PlotterWindow::Option;
using PlotterWindow::Side;

namespace
{

/// What there is, as it would be written.
QByteArray textOf(GrowingPlot &plot)
{
    Scene scene = SceneExchange(&plot.workbench, plot.window.get()).taken();
    scene.title = QStringLiteral("T");
    return sceneText(scene);
}

QStringList replaceBy(GrowingPlot &plot, const QByteArray &text)
{
    const SceneResult read = readScene(text, QStringLiteral("file"));
    return read.errors.isEmpty() ? SceneExchange(&plot.workbench, plot.window.get()).replaceBy(read.scene)
                                 : read.errors;
}

/// Makes a state that has a bit of everything: two containers, curves with gaps, modules that are not as at first.
void disturb(GrowingPlot &plot)
{
    ModuleRack &modules = plot.workbench.modules();
    QCOMPARE(modules.add({QStringLiteral("SIM9/Out"), SimulationSettings{QStringLiteral("io-block")}}, 1), QString());
    QTest::qWait(50); // the notice of the new module empties the boxes
    modules.setMoving(1, false);
    modules.setSilent(0, true);
    modules.setAnswerTime(1, 50);
    modules.setPluggedIn(2, false);
    QTest::qWait(50);

    Scene scene = readSceneFile(shippedScenePath(QStringLiteral("two-modules"))).scene;
    scene.curves.append({{}, scene.curves.constFirst().y, true});
    scene.curves.append(SceneCurve{{}, {}, false});
    scene.curves.append(scene.curves.constFirst());
    scene.curves[3].x.motor = QStringLiteral("Register");
    scene.curves[3].x.value = QStringLiteral("Axis 1 position");
    scene.curves[3].x.isSigned = true;
    scene.curves[0].isOn = false;
    scene.selectedCurve = 3;
    scene.showsLines = false;
    scene.showsAll = true;
    QCOMPARE(SceneRunner(plot.container).apply(scene), QString());
    plot.window->openContainer(plot.window->addContainer());
    plot.window->setPlace(plot.workbench.containers().at(1), {WindowPlace::State::Normal, QRect(30, 20, 900, 500)});
    plot.window->findChild<QDockWidget *>("moduleDock")->hide();
}

/// Presses a button of the next message box, and notes the box's texts.
class Answer : public QObject
{
public:
    explicit Answer(QMessageBox::StandardButton button)
    {
        connect(&m_timer, &QTimer::timeout, this, [this, button] {
            if (auto *const box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
                m_timer.stop();
                text = box->text() + QLatin1Char('\n') + box->informativeText();
                QAbstractButton *const found = box->button(button);
                (found == nullptr ? box->buttons().constFirst() : found)->click();
            }
        });
        m_timer.start(0);
    }

    QString text; ///< empty until there was a box

private:
    QTimer m_timer;
};

} // namespace

/// Set-ups: what is there becomes a file, and a file becomes what is there, or nothing changes.
class SetUpTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void writtenAndReadIsTheSame()
    {
        GrowingPlot plot(QStringLiteral("two-modules"));
        disturb(plot);
        const QByteArray text = textOf(plot);
        // Nothing that a person would miss is left out by both directions alike.
        for (const char *const part :
             {"\"answerTimeMs\": 50", "\"moving\": false", "\"pluggedIn\": false", "\"signed\": true", "\"on\": false",
              "\"selectedCurve\": 4", "\"showAll\": true", "\"frontContainer\": 2", "\"width\": 900", "\"x\": null"}) {
            QVERIFY2(text.contains(part), part);
        }
        GrowingPlot other(QStringLiteral("phase"));
        QCOMPARE(replaceBy(other, text), QStringList());
        QCOMPARE(QString::fromUtf8(textOf(other)), QString::fromUtf8(text));
        QVERIFY(!other.window->findChild<QDockWidget *>("moduleDock")->isVisible());
        QCOMPARE(replaceBy(other, text), QStringList()); // over itself, with the same keys
        QCOMPARE(QString::fromUtf8(textOf(other)), QString::fromUtf8(text));
    }

    void whatCannotBeSetUpChangesNothing_data()
    {
        QTest::addColumn<QString>("original");
        QTest::addColumn<QString>("mistake");
        QTest::addColumn<QStringList>("errors"); // a part of each
        const auto row = [](const char *name, const char *original, const char *mistake, const QStringList &errors) {
            QTest::newRow(name) << QString::fromLatin1(original) << QString::fromLatin1(mistake) << errors;
        };
        row("value", "Actual position [", "Actual positon [",
            {"curve 1, X", "nearest are: \"Actual position [microsteps]\"", "curve 1, Y", "curve 2, Y"});
        row("motor", "\"motor\": \"Axis 0\"", "\"motor\": \"Axis 7\"", {"no motor \"Axis 7\", only: \"Axis 0\""});
        row("sign", "\"value\": \"Axis 1 position\"", "\"value\": \"Status: Position reached\"", {"curve 4, X"});
        row("plugin", "\"plugin\": \"XYPlotter\"", "\"plugin\": \"XYPloter\"",
            {"no plugin \"XYPloter\" is loaded, only: \"XYPlotter\""});
        row("docks", "\"docks\": \"AAAA/", "\"docks\": \"BBBB/", {"docks"});
    }

    void whatCannotBeSetUpChangesNothing()
    {
        QFETCH(QString, original);
        QFETCH(QString, mistake);
        QFETCH(QStringList, errors);
        GrowingPlot plot(QStringLiteral("two-modules"));
        disturb(plot);
        const QString text = QString::fromUtf8(textOf(plot));
        QVERIFY(text.contains(original));
        GrowingPlot other(QStringLiteral("phase"));
        const QByteArray before = textOf(other);
        const QList<ContainerInterface *> containers = other.workbench.containers();
        const auto *const module = other.workbench.modules().module(0);
        const QStringList found = replaceBy(other, QString(text).replace(original, mistake).toUtf8());
        for (const QString &error : qAsConst(errors)) {
            QVERIFY2(found.join('\n').contains(error), qPrintable(found.join('\n')));
        }
        QCOMPARE(other.workbench.containers(), containers); // with their points and recordings
        QCOMPARE(other.workbench.modules().module(0), module);
        QCOMPARE(QString::fromUtf8(textOf(other)), QString::fromUtf8(before));
    }
};

GUARDED_TEST_MAIN(SetUpTest)
#include "SetUpTest.moc"
