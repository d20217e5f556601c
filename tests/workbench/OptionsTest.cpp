#include "Options.h"
#include "GuardedTest.h"

/// The command line: what is understood and what is refused.
class OptionsTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void everythingGivenIsRead();
    void nothingGivenIsNothingSet();
    void mistakeIsNamed_data();
    void mistakeIsNamed();
};

void OptionsTest::everythingGivenIsRead()
{
    const OptionsResult result = parseOptions(
        QStringLiteral("program --scene phase --seconds 2.5 --picture a.png --plugin p.so --plugin more "
                       "--size 640x480 --seed 4294967295 --palette dark --settings s.ini --log l.csv --language de")
            .split(QLatin1Char(' ')));
    QCOMPARE(result.error, QString());
    const Options &options = result.options;
    QCOMPARE(options.scene, QStringLiteral("phase"));
    QCOMPARE(options.seconds.value_or(0.0), 2.5);
    QCOMPARE(options.picture, QStringLiteral("a.png"));
    QCOMPARE(options.plugins, QStringList({QStringLiteral("p.so"), QStringLiteral("more")}));
    QCOMPARE(options.size, QSize(640, 480));
    QCOMPARE(options.seed.value_or(0), 4294967295U);
    QVERIFY(options.palette == PaletteChoice::Dark);
    QCOMPARE(options.settings, QStringLiteral("s.ini"));
    QCOMPARE(options.log, QStringLiteral("l.csv"));
    QCOMPARE(options.language, QStringLiteral("de"));
}

void OptionsTest::nothingGivenIsNothingSet()
{
    const OptionsResult result = parseOptions({QStringLiteral("program")});
    QCOMPARE(result.error, QString());
    QVERIFY(!result.options.seconds && !result.options.seed && !result.options.size.isValid());
    QVERIFY(result.options.scene.isEmpty() && !result.options.wantsHelp && !result.options.wantsSceneList);
}

void OptionsTest::mistakeIsNamed_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QString>("fragment");

    const auto row = [](const char *name, const char *arguments, const char *fragment) {
        QTest::newRow(name) << QString::fromLatin1(arguments) << QString::fromLatin1(fragment);
    };
    row("unknown option", "--colour", "colour");
    row("argument of its own", "circle", "\"circle\"");
    row("value missing", "--seconds", "seconds");
    row("value blank", "--scene=", "--scene");
    row("seconds zero", "--seconds 0", "\"0\"");
    row("seconds negative", "--seconds=-1", "\"-1\"");
    row("seconds not finite", "--seconds inf", "\"inf\"");
    row("seconds no number", "--seconds ten", "\"ten\"");
    row("size without height", "--size 640", "\"640\"");
    row("size empty", "--size 0x10", "\"0x10\"");
    row("size beyond reason", "--size 99999x10", "\"99999x10\"");
    row("seed negative", "--seed=-1", "\"-1\"");
    row("seed too large", "--seed 4294967296", "\"4294967296\"");
    row("log blank", "--log=", "--log");
    row("language unknown", "--language fr", "\"fr\"");
    row("palette unknown", "--palette pink", "\"pink\"");
}

void OptionsTest::mistakeIsNamed()
{
    QFETCH(QString, arguments);
    QFETCH(QString, fragment);
    const QString error =
        parseOptions(QStringList(QStringLiteral("program")) + arguments.split(QLatin1Char(' '))).error;
    QVERIFY2(error.contains(fragment), qPrintable(error));
    QVERIFY(!error.contains(QLatin1Char('\n')));
}

GUARDED_TEST_MAIN(OptionsTest)
#include "OptionsTest.moc"
