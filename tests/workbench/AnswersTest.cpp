#include "Exchange.h"
#include "GuardedTest.h"
#include "modules/AnswerWatch.h"
#include "modules/ModuleRack.h"
#include "window/DeviceDialog.h"
#include "window/ExchangePanel.h"
#include "window/ModulePanel.h"

#include "host/KAROModuleInterface.h"
#include "host/PluginHandler.h"

namespace
{

const QString stepper = "SIM0/Stepper";
const QString servo = "SIM1/Servo";

/// Two modules, what watches them, and the panel that shows them.
struct WatchedRack
{
    WatchedRack()
    {
        QCOMPARE(modules.add({stepper, SimulationSettings{"stepper-3"}}), QString());
        QCOMPARE(modules.add({servo, SimulationSettings{"servo-1"}}), QString());
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
            pair.request = requestFor(handler.getModulePlugin(key)->moduleAddress(), 6, 0, 2);
        }
        channel(key)->sendCommandCombos({&pairs[0], &pairs[1]});
        return pairs[0].reply.value();
    }

    QComboBox *answerTime(const QString &key) const
    {
        return partNamed<QComboBox>(panel, key + ": time of an answer");
    }

    void click(const QString &key, const QString &text) const
    {
        auto *const box = partNamed<QCheckBox>(panel, key + ": " + text);
        QTest::mouseClick(box, Qt::LeftButton, {}, QPoint(8, box->height() / 2));
    }

    QString mark(const QString &key) const
    {
        const auto *const box = partNamed<QCheckBox>(panel, key + ": Plugged in");
        const auto *const label = box->parentWidget()->findChild<QLabel *>("trouble");
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

/// The panels of modules and exchanges, and the statistics of the modules' answers.
class AnswersTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void boxesDoWhatTheySay()
    {
        WatchedRack rack;
        const qint32 before = rack.ask(servo);
        for (int i = 0; i < 20; ++i) {
            rack.ask(servo);
        }
        QVERIFY(rack.ask(servo) != before);
        rack.click(servo, "Moving");
        for (int i = 0; i < 200; ++i) {
            rack.ask(servo); // it brakes
        }
        const qint32 stopped = rack.ask(servo);
        for (int i = 0; i < 20; ++i) {
            QCOMPARE(rack.ask(servo), stopped);
        }
        rack.click(servo, "Silent");
        rack.ask(servo);
        QVERIFY(rack.pairs[0].reply.status() == Command::Status::Unanswered);
        rack.ask(stepper);
        QVERIFY(rack.pairs[0].reply.status() == Command::Status::Answered);
        rack.click(servo, "Plugged in");
        QCOMPARE(rack.handler.getModulePluginKeys(false), QStringList(stepper));
        QVERIFY(!rack.answerTime(servo)->isEnabled());
        for (const char *const text : {"Moving", "Silent", "Plugged in"}) {
            const auto *const box = partNamed<QCheckBox>(rack.panel, servo + ": " + text);
            QCOMPARE(box->isEnabled(), box->text() == "Plugged in");
        }
        rack.click(servo, "Plugged in"); // as it was
        QVERIFY(rack.modules.isPluggedIn(1) && rack.modules.simulation(1)->isSilent &&
                !rack.modules.simulation(1)->isMoving);
        rack.ask(servo);
        QVERIFY(rack.pairs[0].reply.status() == Command::Status::Unanswered);
        rack.click(servo, "Silent");
        QVERIFY(!rack.modules.simulation(1)->isSilent);
    }

    void placesMoveUpAndAreFilledAgain()
    {
        WatchedRack rack;
        rack.modules.setSilent(1, true);
        rack.ask(servo);
        rack.watch.poll(0);
        QCOMPARE(rack.watch.silentModules(), QStringList(servo));
        const ModuleSettings third{"SIM2/Block", SimulationSettings{"io-block"}};
        QVERIFY(rack.modules.replace(1, {stepper, third.family}).contains(stepper)); // a key of another place
        QVERIFY(rack.handler.getModulePlugin(servo) != nullptr);
        QVERIFY(rack.modules.add({servo, third.family}).contains(servo));
        const QPointer<KAROModuleInterface> kept = rack.handler.getModulePlugin(servo);
        const SimulationSettings unknown{"no-such-kind"};
        QVERIFY(rack.modules.replace(1, {servo, unknown}).contains("no-such-kind"));
        QVERIFY(!kept.isNull()); // its values stay chosen
        QCOMPARE(rack.modules.count(), 2);

        rack.modules.remove(0);
        QCOMPARE(rack.handler.getModulePluginKeys(false), QStringList(servo));
        QCOMPARE(rack.watch.silentModules(), QStringList(servo));
        rack.watch.poll(500);
        rack.click(servo, "Plugged in"); // its row is that of the first place now
        QVERIFY(!rack.modules.isPluggedIn(0));
        rack.watch.poll(600);
        QCOMPARE(rack.watch.silentModules(), QStringList()); // nobody waits for one that is taken out
        QCOMPARE(rack.cells(0).constFirst(), servo);

        QCOMPARE(rack.modules.replace(0, third), QString());
        QCOMPARE(rack.handler.getModulePluginKeys(false), QStringList(third.key));
        QVERIFY(rack.watch.silentModules().isEmpty());
        rack.click(third.key, "Silent");
        QVERIFY(rack.modules.simulation(0)->isSilent);
    }

    void axesKeepTheirOwnMotions()
    {
        WatchedRack rack;
        MotionProgram motion;
        motion.offset = 5000.0;
        rack.modules.add({"SIM2/Held", SimulationSettings{"stepper-3", {{1, motion}}}});
        Exchange target({requestFor(rack.handler.getModulePlugin("SIM2/Held")->moduleAddress(), 6, 1, 1)});
        QVERIFY(target.with(rack.channel("SIM2/Held")));
        QCOMPARE(target.reply(0).value(), 5000);
    }

    void chosenTimeIsTaken()
    {
        WatchedRack rack;
        QTest::keyClick(rack.answerTime(stepper), Qt::Key_Down);
        rack.click(stepper, "Plugged in");
        rack.click(stepper, "Plugged in"); // as it was
        rack.ask(stepper);
        QVERIFY(rack.channel(stepper)->statistics().lastDurationNs >= 2 * 5000000);
        rack.ask(servo);
        QVERIFY(rack.channel(servo)->statistics().lastDurationNs < 5000000);
        QTest::keyClick(rack.answerTime(stepper), Qt::Key_End);
        rack.ask(stepper); // later than the channel waits
        QVERIFY(rack.pairs[0].reply.status() == Command::Status::Unanswered);
        rack.modules.setAnswerTime(0, 50); // the box shows what is set elsewhere
        QCOMPARE(rack.answerTime(stepper)->currentText(), QString("Slow: 50 ms"));
    }

    void exchangesAreShownPerModule()
    {
        WatchedRack rack;
        rack.watch.poll(0);
        rack.modules.setAnswerTime(1, 5);
        rack.ask(servo); // the longest one
        rack.modules.setAnswerTime(1, 0);
        for (int i = 1; i < 7; ++i) {
            rack.ask(servo);
        }
        rack.modules.setSilent(1, true);
        rack.ask(servo);
        rack.watch.poll(1000);
        const auto decimal = [](double number) { return QLocale().toString(number, 'f', 1); };
        const auto statistics = *rack.modules.statistics(1);
        QCOMPARE(rack.cells(1), QStringList({servo, decimal(14.0), decimal(double(statistics.lastDurationNs) / 1e3),
                                             decimal(double(statistics.totalDurationNs) / 8e3),
                                             decimal(double(statistics.longestDurationNs) / 1e3), "2"}));
        QCOMPARE(rack.cells(0).at(1), decimal(0.0));
        rack.modules.setPluggedIn(1, false);
        rack.watch.poll(2000);
        QCOMPARE(rack.cells(1), QStringList({servo, "-", "-", "-", "-", "-"}));
        QVERIFY(rack.exchanges.findChild<QTreeWidget *>()->topLevelItem(1)->isDisabled());
    }

    void deviceIsEditedAsItIs()
    {
        DeviceSettings device;
        device.connection.medium = ConnectionSettings::Medium::Rtu;
        device.connection.serialPort = "/dev/ttyS9";
        device.connection.baud = 9600;
        device.connection.parity = ConnectionSettings::Parity::Odd;
        device.connection.stopBits = 2;
        device.connection.unit = 3;
        device.mapFile = "/maps/m.json";
        WatchedRack rack;
        QCOMPARE(rack.modules.add({"Drive", device}, 0, false), QString());
        const ModuleSettings shown = DeviceDialog(&rack.modules, 2).settings();
        QCOMPARE(shown.key, QString("Drive"));
        QVERIFY(std::get<DeviceSettings>(shown.family).connection == device.connection);
        QCOMPARE(std::get<DeviceSettings>(shown.family).mapFile, device.mapFile);
    }

    void answersAreCountedNotQuestions()
    {
        WatchedRack rack;
        QSignalSpy fallen(&rack.watch, &AnswerWatch::fellSilent);
        QSignalSpy risen(&rack.watch, &AnswerWatch::answersAgain);
        const auto askFor = [&](qint64 fromMs, int looks) {
            for (int look = 0; look < looks; ++look) {
                for (int i = 0; i < 5; ++i) {
                    rack.ask(servo);
                }
                rack.watch.poll(fromMs + look * 500);
            }
        };
        rack.watch.poll(0);
        askFor(500, 4);
        QCOMPARE(rack.watch.answersPerSecond(1), 20.0); // five exchanges of two requests in half a servo
        QCOMPARE(rack.watch.answersPerSecond(), 20.0);
        QVERIFY(rack.watch.state(1) == AnswerWatch::State::Answering);
        QVERIFY(rack.watch.state(0) == AnswerWatch::State::Unasked);
        QCOMPARE(rack.mark(servo), QString());

        rack.modules.setSilent(1, true);
        askFor(2500, 6);
        QCOMPARE(rack.watch.answersPerSecond(), 0.0);
        QCOMPARE(rack.watch.silentModules(), QStringList(servo));
        QVERIFY2(rack.mark(servo).contains("Not answering since "), qPrintable(rack.mark(servo)));
        QCOMPARE(rack.mark(stepper), QString());
        QCOMPARE(fallen.size(), 1);

        rack.modules.setSilent(1, false);
        QTRY_VERIFY_WITH_TIMEOUT((rack.ask(servo), !rack.channel(servo)->isSilenced()),
                                 maximumWaitMs); // it is tried again after a servo
        rack.watch.poll(8000);
        QCOMPARE(risen.size(), 1);
        QCOMPARE(risen.constFirst().at(1).toInt(), 5);
        QCOMPARE(rack.mark(servo), QString());
    }

    void restingModuleIsSlow()
    {
        WatchedRack rack;
        rack.modules.setAnswerTime(1, 5);
        rack.watch.poll(0);
        while (rack.channel(servo)->statistics().rests == 0) {
            rack.ask(servo);
        }
        QVERIFY(rack.modules.missedAnswers() > 0); // what is not asked keeps its old value
        rack.watch.poll(500);
        QVERIFY(rack.watch.state(1) == AnswerWatch::State::Slow);
        QVERIFY2(rack.mark(servo).contains("Slow: "), qPrintable(rack.mark(servo)));
        const qint64 laterMs = 500 + AnswerRate::windowMs;
        rack.watch.poll(laterMs);
        QVERIFY(rack.watch.state(1) == AnswerWatch::State::Slow);
        rack.watch.poll(laterMs + 1); // it has not rested since
        QCOMPARE(rack.mark(servo), QString());
    }
};

GUARDED_TEST(AnswersTest)
#include "AnswersTest.moc"
