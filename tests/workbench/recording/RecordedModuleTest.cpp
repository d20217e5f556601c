#include "modules/recording/RecordedModule.h"
#include "Exchange.h"
#include "GuardedTest.h"
#include "ScriptedCurve.h"
#include "XYPlotter.h"

/// A recording that is played as a module, by itself and in the real plot window.
class RecordedModuleTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void playedAndLoggedAgainIsTheSame()
    {
        const QString original = temporaryPath("original.csv");
        {
            ScriptedCurve recorder(&m_root);
            recorder.chooseBoth();
            REQUIRE(recorder.choose(1, 'X', "S/m", QString(), "pos"));
            REQUIRE(recorder.choose(1, 'Y', "S/m", QString(), "pos"));
            recorder.curveBox(1)->click();
            recorder.sample(-5, -5);
            recorder.startLog(original);
            for (int time = 0; time < 3000; ++time) {
                recorder.sample(time * time / 3 % 100, time % 7); // the second curve repeats some points
            }
            recorder.sample(-2147483647 - 1, 2147483647);
        }
        const QByteArrayList expected = linesOf(original);
        QVERIFY(expected.size() > 2900 && expected.join().contains(";;;"));

        PluginHarness player(&m_root);
        RecordedModule *const module = plug(&player.handler, original, QString(), false);
        player.open();
        for (int curve = 0; curve < 2; ++curve) {
            const QString axis = QString("Axis %1").arg(curve);
            REQUIRE(player.choose(curve, 'X', "REC0/run", axis, "pos"));
            REQUIRE(player.choose(curve, 'Y', "REC0/run", axis, curve == 0 ? "speed" : "pos (Y)"));
        }
        player.curveBox(1)->click();
        module->setRow(module->file().rowCount() - 1);
        player.sampleTick(); // a curve's first point is not logged
        const QString again = temporaryPath("again.csv");
        player.startLog(again);
        module->setRow(0);
        module->playback().setPlaying(true);
        for (int row = 0; row < module->file().rowCount() + 5; ++row) {
            player.sampleTick();
            QCoreApplication::sendPostedEvents();
        }
        QVERIFY(module->playback().isAtEnd() && !module->playback().isPlaying());
        const QByteArrayList found = linesOf(again);
        QCOMPARE(found.size(), expected.size());
        for (int line = 2; line < found.size(); ++line) {
            QCOMPARE(found.at(line), expected.at(line));
        }
        QCOMPARE(found.at(0), QByteArray("Module:;original.csv [Axis 0];original.csv [Axis 0];original.csv [Axis "
                                         "1];original.csv [Axis 1];\r"));
        QCOMPARE(found.at(1), QByteArray("Counter;pos [raw];speed [raw];pos (X) [raw];pos (Y) [raw];\r"));
    }

    /// One letter for each exchange of a caller, a bar where the event loop runs.
    void callersOfOneTimeReadTheSameRow_data()
    {
        testRows<QString, QString>({"callers", "rows"}, {{"one", "a|a|a", "1|2|3"},
                                                         {"four curves", "abcd|abcd|abcd", "1111|2222|3333"},
                                                         {"without an event loop", "ababab", "112233"},
                                                         {"two containers", "ab|c|ab|c|ab", "11|1|22|2|33"},
                                                         {"a curve is switched on", "b|b|ab|ab|ab", "1|2|22|33|44"},
                                                         {"a curve is switched off", "ab|b|b", "11|2|3"},
                                                         {"a container closes", "a|b|a|b|b|b", "1|1|2|2|3|4"}});
    }

    void callersOfOneTimeReadTheSameRow()
    {
        QFETCH(QString, callers);
        PluginHandler handler;
        RecordedModule *const module = plug(&handler, counting(10), QString());
        QMap<QChar, CommandCombo> pairs;
        QString rows;
        for (const QChar caller : qAsConst(callers)) {
            if (caller == '|') {
                QCoreApplication::sendPostedEvents();
                rows += '|';
                continue;
            }
            CommandCombo &pair = pairs[caller];
            pair.request = requestFor(RecordedModule::address, 10, 2, RecordedModule::rowNumber);
            module->commandHandlerInterface()->sendCommandCombos({&pair});
            rows += QString::number(pair.reply.value());
        }
        QTEST(rows, "rows");
    }

    void playsAtItsSpeed_data()
    {
        testRows<int, QString>({"speedTenths", "rows"}, {{"as recorded", 10, "1 2 3 4 5 6 7 8 8"},
                                                         {"half", 5, "1 1 2 2 3 3 4 4 5"},
                                                         {"two and a half times", 25, "1 3 6 8 8 8 8 8 8"},
                                                         {"too slow", -4, "1 1 1 1 1 1 1 1 1"},
                                                         {"too fast", 5000, "1 8 8 8 8 8 8 8 8"}});
    }

    void playsAtItsSpeed()
    {
        QFETCH(int, speedTenths);
        PluginHandler handler;
        RecordedModule *const module = plug(&handler, counting(8), QString());
        module->playback().setSpeedTenths(speedTenths);
        QTEST(rowsOf(module, 9), "rows");
    }

    void goesWhereItIsSent()
    {
        PluginHandler handler;
        RecordedModule *const module = plug(&handler, counting(5), QString());
        QCOMPARE(rowsOf(module, 2), QString("1 2"));
        module->playback().setPlaying(false);
        QCOMPARE(rowsOf(module, 3), QString("2 2 2"));
        module->setRow(3);
        QCOMPARE(rowsOf(module, 2), QString("4 4"));
        module->playback().setPlaying(true);
        QCOMPARE(rowsOf(module, 3), QString("5 5 5"));
        QVERIFY(module->playback().isAtEnd() && !module->playback().isPlaying());
        module->playback().setPlaying(true); // begins anew
        QCOMPARE(rowsOf(module, 2), QString("1 2"));
        module->setRow(99);
        module->playback().setRepeated(true);
        QCOMPARE(rowsOf(module, 4), QString("5 1 2 3"));
        module->setRow(-4);
        QCOMPARE(rowsOf(module, 2), QString("1 2"));
    }

    void lostLinesTakeTheirTime()
    {
        PluginHandler handler;
        const QString path = written("run.csv", "Module:;M;M;\r\nCounter;a;b;\r\n3;1;1;\r\n6;2;2;\r\n7;3;3;\r\n");
        RecordedModule *const module = plug(&handler, path, QString());
        QCOMPARE(rowsOf(module, 6), QString("1 1 1 2 3 3"));
        QCOMPARE(answer(module, 10, 2, RecordedModule::timeNumber).value(), 4 * 14);
    }

    void answersWhatItOffersOnly()
    {
        PluginHandler handler;
        RecordedModule *const module = plug(&handler, written("run.csv", "a,b [V]\n1,2.5\n"), QString());
        QCOMPARE(module->numberOfAxes(), 1);
        QCOMPARE(module->getParameterMapByName("axis0")->size(), 2);
        QVERIFY(module->getParameterMapByName("axis1") == nullptr && module->getParameterMapByName("io0") == nullptr);
        QVERIFY(module->registers().isEmpty());
        const Parameter b = module->getParameterMapByName("axis0")->last();
        QCOMPARE(b.name + ' ' + b.nameSuffix, QString("b [0.1 V]"));
        QCOMPARE(answer(module, 6, 0, 1).value(), 25);
        for (const QVector<int> &numbers :
             {QVector<int>{6, 0, 2}, {6, 1, 0}, {10, 2, 3}, {10, 1, 254}, {15, 0, 0}, {148, 0, 0}}) {
            QVERIFY(answer(module, numbers[0], numbers[1], numbers[2]).status() == Command::Status::Refused);
        }
        CommandCombo ofAnother;
        ofAnother.request = requestFor(1, 6, 0, 1);
        module->commandHandlerInterface()->sendCommandCombos({nullptr, &ofAnother});
        QVERIFY(ofAnother.reply.status() == Command::Status::Refused);
    }

    void besideAModuleBothAreInOnePlot()
    {
        ScriptedCurve plot(&m_root);
        plot.module->addParameter("global2", "par::v", 4, "variable");
        RecordedModule *const module = plug(&plot.handler, counting(9), "S/m");
        REQUIRE(QTest::qWaitFor([&] { return plot.moduleBox(0, 'X')->count() == 2; }));
        REQUIRE(plot.choose(0, 'X', "REC0/run", "Axis 0", "pos"));
        REQUIRE(plot.choose(0, 'Y', "REC0/run", "Axis 0", "variable"));
        REQUIRE(plot.choose(1, 'X', "REC0/run", "Axis 1", "row"));
        REQUIRE(plot.choose(1, 'Y', "REC0/run", "Axis 1", "Recording: time"));
        plot.curveBox(1)->click();
        plot.module->channel.answer = [&](const Command &request) {
            return request.address() == 1 && request.command() == 10 ? int(request.type()) : plot.x;
        };
        plot.sample(70, 0);
        plot.sample(71, 0);
        QCOMPARE(plot.points(0), QVector<QPointF>({{70, 4}, {71, 4}}));
        QCOMPARE(plot.points(1), QVector<QPointF>({{1, 0}, {2, 14}}));

        plot.module->channel.isSilent = true;
        plot.sample(72, 0);
        QCOMPARE(plot.points(0).constLast(), QPointF(71, 4)); // the last answer stays
        QCOMPARE(plot.points(1).constLast(), QPointF(3, 28));
        QCOMPARE(plot.module->channel.statistics().unanswered, 2u);
        QCOMPARE(module->commandHandlerInterface()->statistics().unanswered, 0u);

        QCOMPARE(module->numberOfAxes(), 2);
        plot.handler.removeModulePlugin("S/m");
        QCOMPARE(module->numberOfAxes(), 1);
        QCOMPARE(answer(module, 6, 0, 0).value(), 3);
        QVERIFY(answer(module, 6, 1, 0).status() == Command::Status::Refused);
        plot.sampleTick(); // all sources are off
    }

    void twoRecordingsBesideEachOtherAnswer()
    {
        PluginHandler handler;
        RecordedModule *const one = plug(&handler, counting(3), "REC1/run");
        auto other = RecordedModule::open({counting(3), "REC0/run"}, "REC1/run", &handler);
        QVERIFY(handler.addModulePlugin(other.module.get()));
        QCOMPARE(one->numberOfAxes() + other.module.release()->numberOfAxes(), 2);
        QVERIFY(answer(one, 148, 0, 0).status() == Command::Status::Refused);
    }

    void playingStopsWhenTheFileIsCutOff()
    {
        PluginHandler handler;
        RecordedModule *const module = plug(&handler, counting(20000), QString());
        QCOMPARE(answer(module, 6, 0, 0).value(), 1);
        QCOMPARE(answer(module, 6, 0, 0).value(), 2);
        QVERIFY(QFile::resize(module->file().path(), 100));
        module->playback().seek(19000);
        QCOMPARE(answer(module, 6, 0, 0).value(), 2); // the last one that was read
        QVERIFY(!module->playback().isPlaying());
        QVERIFY2(module->trouble().contains("has become shorter"), qPrintable(module->trouble()));
    }

private:
    /// A file whose only column counts the rows from 1.
    QString counting(int rows) const
    {
        QByteArray bytes = "row\n";
        for (int row = 1; row <= rows; ++row) {
            bytes += QByteArray::number(row) + '\n';
        }
        return written("run.csv", bytes);
    }

    static RecordedModule *plug(PluginHandler *handler, const QString &path, const QString &beside,
                                bool isPlaying = true)
    {
        RecordingSettings settings;
        settings.file = path;
        settings.beside = beside;
        settings.isPlaying = isPlaying;
        auto result = RecordedModule::open(settings, "REC0/run", handler);
        REQUIRE(result.error.isEmpty() && handler->addModulePlugin(result.module.get()));
        return result.module.release();
    }

    /// Of an exchange at a time of its own.
    Command answer(RecordedModule *module, int command, int motorBank, int type)
    {
        QCoreApplication::sendPostedEvents();
        m_pair.request = requestFor(RecordedModule::address, command, motorBank, type);
        module->commandHandlerInterface()->sendCommandCombos({&m_pair});
        return m_pair.reply;
    }

    /// The numbers of the rows that are read at \a times, one after the other.
    QString rowsOf(RecordedModule *module, int times)
    {
        QStringList rows;
        for (int time = 0; time < times; ++time) {
            rows.append(QString::number(answer(module, 10, 2, RecordedModule::rowNumber).value()));
        }
        return rows.join(' ');
    }

    XYPlotter m_root;
    CommandCombo m_pair;
};

GUARDED_TEST(RecordedModuleTest)
#include "RecordedModuleTest.moc"
