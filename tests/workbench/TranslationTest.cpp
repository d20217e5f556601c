#include "GuardedTest.h"
#include "Language.h"
#include "MainWindow.h"
#include "Workbench.h"

#include "host/ContainerInterface.h"

#include <QDockWidget>
#include <QLibraryInfo>
#include <QMenuBar>
#include <QMessageBox>
#include <QProcess>
#include <QPushButton>

/// The German texts: complete, and shown.
class TranslationTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void everyTextIsTranslated();
    void windowSpeaksGermanAndThePluginItsOwnTexts();
};

void TranslationTest::everyTextIsTranslated()
{
    const QString shipped = QStringLiteral(WORKBENCH_FOLDER "/translations/xy-plot-workbench_de.ts");
    const QString updated = temporaryPath(QStringLiteral("updated.ts"));
    QVERIFY(QFile::copy(shipped, updated));
    QFile::setPermissions(updated, QFile::ReadOwner | QFile::WriteOwner);
    QProcess lupdate;
    lupdate.start(QStringLiteral(LUPDATE), {QStringLiteral(WORKBENCH_FOLDER), QStringLiteral("-ts"), updated});
    QVERIFY(lupdate.waitForFinished());
    QCOMPARE(lupdate.exitCode(), 0);
    QCOMPARE(lupdate.readAllStandardError(), QByteArray()); // it complains there of texts without a context

    QFile file(updated);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QString texts = QString::fromUtf8(file.readAll());
    QVERIFY(texts.count(QStringLiteral("<source>")) > 150);
    for (const char *const mark : {"type=\"unfinished\"", "type=\"vanished\"", "type=\"obsolete\""}) {
        const int place = texts.indexOf(QLatin1String(mark));
        QVERIFY2(place < 0, qPrintable(texts.mid(place - 200, 250)));
    }
}

void TranslationTest::windowSpeaksGermanAndThePluginItsOwnTexts()
{
    Language::use(QStringLiteral("de"));
    Workbench workbench(SimulationClock::Drive::Exchanges, 1);
    QCOMPARE(workbench.loadPlugin(QStringLiteral(PLUGIN)), QString());
    QVERIFY(workbench.modules().add({QStringLiteral("servo-1"), QStringLiteral("S/One"), {}}, 1));
    MainWindow window(&workbench);
    ContainerInterface *const container = window.addContainer();
    window.openContainer(container);
    QCOMPARE(window.menuBar()->actions().constFirst()->text(), QStringLiteral("&Datei"));
    QCOMPARE(window.findChild<QDockWidget *>(QStringLiteral("messageDock"))->windowTitle(),
             QStringLiteral("Meldungen"));
    const auto *const refresh = container->findChild<QPushButton *>(QStringLiteral("btnRefresh"));
    QVERIFY(refresh != nullptr);
    QCOMPARE(refresh->text(), QStringLiteral("Refresh"));
    if (QFile::exists(QLibraryInfo::location(QLibraryInfo::TranslationsPath) + QStringLiteral("/qtbase_de.qm"))) {
        const QMessageBox box(QMessageBox::NoIcon, QString(), QString(), QMessageBox::Cancel);
        QCOMPARE(box.button(QMessageBox::Cancel)->text(), QStringLiteral("Abbrechen"));
    }
}

GUARDED_TEST_MAIN(TranslationTest)
#include "TranslationTest.moc"
