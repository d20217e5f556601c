#include "GuardedTest.h"
#include "modules/AnswerWatch.h"
#include "modules/ModuleRack.h"
#include "window/DeviceDialog.h"
#include "window/ExchangePanel.h"
#include "window/ModulePanel.h"

#include "host/KAROModuleInterface.h"
#include "host/PluginHandler.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLocale>
#include <QPointer>
#include <QTreeWidget>

namespace
{

constexpr int maximumWaitMs = 30000; // generous, for a busy machine: a wait ends when its condition holds
const QString first = QStringLiteral("SIM0/Stepper");
const QString second = QStringLiteral("SIM1/Servo");

/// Two modules, what watches them, and the panel that shows them.
struct Rack
{
    Rack()
    {
        QCOMPARE(modules.add({first, SimulationSettings{QStringLiteral("stepper-3")}}), QString());
        QCOMPARE(modules.add({second, SimulationSettings{QStringLiteral("servo-1")}}), QString());
        panel.resize(300, 600);
        panel.show();
    }

    CommandHandlerInterface *channel(const QString &key) const
    {
        return handler.getModulePlugin(key)->commandHandlerInterface();
    }

    /// One exchange of two requests for the position of the first axis; returns its value.
    qint32 ask(const QString &key)
    {
        for (CommandCombo &pair : pairs) {
            pair.request.setAddress(handler.getModulePlugin(key)->moduleAddress());
            pair.request.setCommand(0x06);
            pair.request.setType(0x02);
        }
        channel(key)->sendCommandCombos({&pairs[0], &pairs[1]});
        return pairs[0].reply.value();
    }

    QComboBox *answerTime(const QString &key) const
    {
        return partNamed<QComboBox>(panel, key + QStringLiteral(": time of an answer"));
    }

    void click(const QString &key, const QString &text) const
    {
        auto *const box = partNamed<QCheckBox>(panel, key + QStringLiteral(": ") + text);
        QTest::mouseClick(box, Qt::LeftButton, {}, QPoint(8, box->height() / 2));
    }

    QString mark(const QString &key) const
    {
        const auto *const box = partNamed<QCheckBox>(panel, key + QStringLiteral(": Plugged in"));
        const auto *const label = box->parentWidget()->findChild<QLabel *>(QStringLiteral("trouble"));
        return label->isVisible() ? label->text() : QString();
    }

    QStringList cells(int row) const
    {
        QStringList texts;
        const QTreeWidgetItem *const item = exchanges.findChild<QTreeWidget *>()->topLevelItem(row);
        for (int column = 0; column < item->columnCount(); ++column) {
            texts.append(item->text(column));
        }
        return texts;
    }

    PluginHandler handler;
    ModuleRack modules{&handler, SimulationClock::Drive::Exchanges, 14};
    AnswerWatch watch{&modules};
    ModulePanel panel{&modules, &watch};
    ExchangePanel exchanges{&modules, &watch};
    CommandCombo pairs[2];
};

} // namespace

/// The lists of modules and exchanges, and what is found out about the modules' answers.
class AnswersTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void boxesDoWhatTheySay()
    {
        Rack rack;
        const qint32 before = rack.ask(second);
        for (int i = 0; i < 20; ++i) {
            rack.ask(second);
        }
        QVERIFY(rack.ask(second) != before);
        rack.click(second, "Moving");
        for (int i = 0; i < 200; ++i) {
            rack.ask(second); // it brakes
        }
        const qint32 stopped = rack.ask(second);
        for (int i = 0; i < 20; ++i) {
            QCOMPARE(rack.ask(second), stopped);
        }
        rack.click(second, "Silent");
        rack.ask(second);
        QVERIFY(rack.pairs[0].reply.status() == Command::Status::Unanswered);
        rack.ask(first);
        QVERIFY(rack.pairs[0].reply.status() == Command::Status::Answered);
        rack.click(second, "Plugged in");
        QCOMPARE(rack.handler.getModulePluginKeys(false), QStringList(first));
        QVERIFY(!rack.answerTime(second)->isEnabled());
        for (const char *const text : {"Moving", "Silent", "Plugged in"}) {
            const auto *const box = partNamed<QCheckBox>(rack.panel, second + QStringLiteral(": ") + text);
            QCOMPARE(box->isEnabled(), box->text() == QLatin1String("Plugged in"));
        }
        rack.click(second, "Plugged in"); // as it was
        QVERIFY(rack.modules.isPluggedIn(1) && rack.modules.simulation(1)->isSilent &&
                !rack.modules.simulation(1)->isMoving);
        rack.ask(second);
        QVERIFY(rack.pairs[0].reply.status() == Command::Status::Unanswered);
        rack.click(second, "Silent");
        QVERIFY(!rack.modules.simulation(1)->isSilent);
    }

    void placesMoveUpAndAreFilledAgain()
    {
        Rack rack;
        rack.modules.setSilent(1, true);
        rack.ask(second);
        rack.watch.poll(0);
        QCOMPARE(rack.watch.silentModules(), QStringList(second));
        const ModuleSettings third{QStringLiteral("SIM2/Block"), SimulationSettings{QStringLiteral("io-block")}};
        QVERIFY(rack.modules.replace(1, {first, third.family}).contains(first)); // a key of another place
        QVERIFY(rack.handler.getModulePlugin(second) != nullptr);
        QVERIFY(rack.modules.add({second, third.family}).contains(second));
        const QPointer<KAROModuleInterface> kept = rack.handler.getModulePlugin(second);
        const SimulationSettings unknown{QStringLiteral("no-such-kind")};
        QVERIFY(rack.modules.replace(1, {second, unknown}).contains("no-such-kind"));
        QVERIFY(!kept.isNull()); // its values stay chosen
        QCOMPARE(rack.modules.count(), 2);

        rack.modules.remove(0);
        QCOMPARE(rack.handler.getModulePluginKeys(false), QStringList(second));
        QCOMPARE(rack.watch.silentModules(), QStringList(second));
        rack.watch.poll(500);
        rack.click(second, "Plugged in"); // its row is that of the first place now
        QVERIFY(!rack.modules.isPluggedIn(0));
        rack.watch.poll(600);
        QCOMPARE(rack.watch.silentModules(), QStringList()); // nobody waits for one that is taken out
        QCOMPARE(rack.cells(0).constFirst(), second);

        QCOMPARE(rack.modules.replace(0, third), QString());
        QCOMPARE(rack.handler.getModulePluginKeys(false), QStringList(third.key));
        QVERIFY(rack.watch.silentModules().isEmpty());
        rack.click(third.key, "Silent");
        QVERIFY(rack.modules.simulation(0)->isSilent);
    }

    void axesKeepTheirOwnMotions()
    {
        Rack rack;
        MotionProgram motion;
        motion.offset = 5000.0;
        rack.modules.add({QStringLiteral("SIM2/Held"), SimulationSettings{QStringLiteral("stepper-3"), {{1, motion}}}});
        CommandCombo target;
        target.request.setAddress(rack.handler.getModulePlugin(QStringLiteral("SIM2/Held"))->moduleAddress());
        target.request.setCommand(0x06);
        target.request.setType(0x01);
        target.request.setMotorBank(1);
        rack.channel(QStringLiteral("SIM2/Held"))->sendCommandCombos({&target});
        QCOMPARE(target.reply.value(), 5000);
    }

    void chosenTimeIsTaken()
    {
        Rack rack;
        QTest::keyClick(rack.answerTime(first), Qt::Key_Down);
        rack.click(first, "Plugged in");
        rack.click(first, "Plugged in"); // as it was
        rack.ask(first);
        QVERIFY(rack.channel(first)->statistics().lastDurationNs >= 2 * 5000000);
        rack.ask(second);
        QVERIFY(rack.channel(second)->statistics().lastDurationNs < 5000000);
        QTest::keyClick(rack.answerTime(first), Qt::Key_End);
        rack.ask(first); // later than the channel waits
        QVERIFY(rack.pairs[0].reply.status() == Command::Status::Unanswered);
        rack.modules.setAnswerTime(0, 50); // the box shows what is set elsewhere
        QCOMPARE(rack.answerTime(first)->currentText(), QStringLiteral("Slow: 50 ms"));
    }

    void exchangesAreShownPerModule()
    {
        Rack rack;
        rack.watch.poll(0);
        rack.modules.setAnswerTime(1, 5);
        rack.ask(second); // the longest one
        rack.modules.setAnswerTime(1, 0);
        for (int i = 1; i < 7; ++i) {
            rack.ask(second);
        }
        rack.modules.setSilent(1, true);
        rack.ask(second);
        rack.watch.poll(1000);
        const auto decimal = [](double number) { return QLocale().toString(number, 'f', 1); };
        const auto statistics = *rack.modules.statistics(1);
        QCOMPARE(rack.cells(1), QStringList({second, decimal(14.0), decimal(double(statistics.lastDurationNs) / 1e3),
                                             decimal(double(statistics.totalDurationNs) / 8e3),
                                             decimal(double(statistics.longestDurationNs) / 1e3), "2"}));
        QCOMPARE(rack.cells(0).at(1), decimal(0.0));
        rack.modules.setPluggedIn(1, false);
        rack.watch.poll(2000);
        QCOMPARE(rack.cells(1), QStringList({second, "-", "-", "-", "-", "-"}));
        QVERIFY(rack.exchanges.findChild<QTreeWidget *>()->topLevelItem(1)->isDisabled());
    }

    void deviceIsEditedAsItIs()
    {
        DeviceSettings device;
        device.connection.medium = ConnectionSettings::Medium::Rtu;
        device.connection.serialPort = QStringLiteral("/dev/ttyS9");
        device.connection.baud = 9600;
        device.connection.parity = ConnectionSettings::Parity::Odd;
        device.connection.stopBits = 2;
        device.connection.unit = 3;
        device.mapFile = QStringLiteral("/maps/m.json");
        Rack rack;
        QCOMPARE(rack.modules.add({QStringLiteral("Drive"), device}, 0, false), QString());
        const ModuleSettings shown = DeviceDialog(&rack.modules, 2).settings();
        QCOMPARE(shown.key, QStringLiteral("Drive"));
        QVERIFY(std::get<DeviceSettings>(shown.family).connection == device.connection);
        QCOMPARE(std::get<DeviceSettings>(shown.family).mapFile, device.mapFile);
    }

    void answersAreCountedNotQuestions()
    {
        Rack rack;
        QSignalSpy fallen(&rack.watch, &AnswerWatch::fellSilent);
        QSignalSpy risen(&rack.watch, &AnswerWatch::answersAgain);
        const auto askFor = [&](qint64 fromMs, int looks) {
            for (int look = 0; look < looks; ++look) {
                for (int i = 0; i < 5; ++i) {
                    rack.ask(second);
                }
                rack.watch.poll(fromMs + look * 500);
            }
        };
        rack.watch.poll(0);
        askFor(500, 4);
        QCOMPARE(rack.watch.answersPerSecond(1), 20.0); // five exchanges of two requests in half a second
        QCOMPARE(rack.watch.answersPerSecond(), 20.0);
        QVERIFY(rack.watch.state(1) == AnswerWatch::State::Answering);
        QVERIFY(rack.watch.state(0) == AnswerWatch::State::Unasked);
        QCOMPARE(rack.mark(second), QString());

        rack.modules.setSilent(1, true);
        askFor(2500, 6);
        QCOMPARE(rack.watch.answersPerSecond(), 0.0);
        QCOMPARE(rack.watch.silentModules(), QStringList(second));
        QVERIFY2(rack.mark(second).contains("Not answering since "), qPrintable(rack.mark(second)));
        QCOMPARE(rack.mark(first), QString());
        QCOMPARE(fallen.size(), 1);

        rack.modules.setSilent(1, false);
        QTRY_VERIFY_WITH_TIMEOUT((rack.ask(second), !rack.channel(second)->isSilenced()),
                                 maximumWaitMs); // it is tried again after a second
        rack.watch.poll(8000);
        QCOMPARE(risen.size(), 1);
        QCOMPARE(risen.constFirst().at(1).toInt(), 5);
        QCOMPARE(rack.mark(second), QString());
    }

    void restingModuleIsSlow()
    {
        Rack rack;
        rack.modules.setAnswerTime(1, 5);
        rack.watch.poll(0);
        while (rack.channel(second)->statistics().rests == 0) {
            rack.ask(second);
        }
        QVERIFY(rack.modules.missedAnswers() > 0); // what is not asked keeps its old value
        rack.watch.poll(500);
        QVERIFY(rack.watch.state(1) == AnswerWatch::State::Slow);
        QVERIFY2(rack.mark(second).contains("Slow: "), qPrintable(rack.mark(second)));
        const qint64 laterMs = 500 + AnswerRate::windowMs;
        rack.watch.poll(laterMs);
        QVERIFY(rack.watch.state(1) == AnswerWatch::State::Slow);
        rack.watch.poll(laterMs + 1); // it has not rested since
        QCOMPARE(rack.mark(second), QString());
    }
};

GUARDED_TEST_MAIN(AnswersTest)
#include "AnswersTest.moc"
