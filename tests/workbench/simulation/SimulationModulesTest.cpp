#include "SimulatedModule.h"

#include "GuardedTest.h"

#include "host/CommandHandlerInterface.h"
#include "host/ParameterType.h"
#include "host/RegisterSet.h"

#include <QSet>

#include <cmath>

namespace
{

struct Request
{
    int command;
    int motorBank;
    int type;
};

CommandCombo combo(const Request &request, int address)
{
    CommandCombo result;
    result.request.setAddress(static_cast<unsigned char>(address));
    result.request.setCommand(static_cast<unsigned char>(request.command));
    result.request.setMotorBank(static_cast<unsigned char>(request.motorBank));
    result.request.setType(static_cast<unsigned short>(request.type));
    return result;
}

/// A module of its own clock that is driven by exchanges.
class Bench
{
public:
    explicit Bench(const QString &kind, quint32 seed = 1)
        : clock(SimulationClock::Drive::Exchanges)
        , module(createModule(kind, QStringLiteral("SIM0/Device"), nullptr, &clock, seed))
    {
    }

    Command ask(const Request &request)
    {
        return ask(request, module->moduleAddress());
    }

    Command ask(const Request &request, int address)
    {
        CommandCombo pair = combo(request, address);
        module->commandHandlerInterface()->sendCommandCombos({&pair});
        return pair.reply;
    }

    /// The values of one exchange.
    QVector<qint32> values(const QVector<Request> &requests)
    {
        QVector<CommandCombo> pairs;
        for (const Request &request : requests) {
            pairs.append(combo(request, module->moduleAddress()));
        }
        QList<CommandCombo *> pointers;
        for (CommandCombo &pair : pairs) {
            pointers.append(&pair);
        }
        module->commandHandlerInterface()->sendCommandCombos(pointers);
        QVector<qint32> result;
        for (const CommandCombo &pair : qAsConst(pairs)) {
            result.append(pair.reply.value());
        }
        return result;
    }

    int registerCommand() const
    {
        return module->getChannel() == 1 ? 149 : 148;
    }

    SimulationClock clock;
    const QScopedPointer<SimulatedModule> module;
};

struct Listed
{
    Request request;
    bool readable;
    QString text;
};

void appendMap(QVector<Listed> &listed, SimulatedModule &module, const QString &mapName, int command, int motorBank)
{
    const QMap<QString, Parameter> *const map = module.getParameterMapByName(mapName);
    if (map == nullptr) {
        return;
    }
    for (const Parameter &parameter : *map) {
        listed.append({{command, motorBank, parameter.number},
                       parameter.access.contains(QLatin1Char('r')),
                       mapName + QLatin1Char(' ') + parameter.name + QLatin1Char(' ') + parameter.nameSuffix});
    }
}

/// Everything that a module lists, as a reader of its parameter maps and registers finds it.
QVector<Listed> listedValues(Bench &bench)
{
    QVector<Listed> listed;
    for (int axis = 0; axis < bench.module->numberOfAxes(); ++axis) {
        appendMap(listed, *bench.module, QStringLiteral("axis%1").arg(axis), 6, axis);
    }
    appendMap(listed, *bench.module, QStringLiteral("global2"), 10, 2);
    appendMap(listed, *bench.module, QLatin1String(ParameterType::DigitalInput), 15, 0);
    appendMap(listed, *bench.module, QLatin1String(ParameterType::AnalogInput), 15, 1);
    appendMap(listed, *bench.module, QLatin1String(ParameterType::DigitalOutput), 15, 2);
    for (const Register *entry : bench.module->registers()) {
        listed.append(
            {{bench.registerCommand(), 0, entry->getOffset()}, entry->kind() != Register::Writable, entry->getTitle()});
    }
    return listed;
}

qint32 signedField(qint32 value, int offset, int width)
{
    return static_cast<qint32>(static_cast<quint32>(value) << (32 - offset - width)) >> (32 - width);
}

quint32 unsignedField(qint32 value, int offset, int width)
{
    return (static_cast<quint32>(value) >> offset) & ((1u << width) - 1u);
}

} // namespace

class SimulationModulesTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void kinds();
    void listedValuesAreAnswered_data();
    void listedValuesAreAnswered();
    void everythingElseIsRefused();
    void registersOfEveryShape_data();
    void registersOfEveryShape();
    void fieldsAgreeWithWhatTheyMirror();
    void sameSeedSameValues_data();
    void sameSeedSameValues();
    void movesUntilSwitchedOff();
    void silence();
    void modulesLeaveTheirClock();
};

void SimulationModulesTest::kinds()
{
    SimulationClock clock(SimulationClock::Drive::Exchanges);
    QCOMPARE(createModule(QStringLiteral("unknown"), QStringLiteral("SIM0/A"), nullptr, &clock, 1), nullptr);
    QVERIFY(simulatedModuleSummary(QStringLiteral("unknown")).isEmpty());
    QSet<int> addresses;
    for (const QString &kind : simulatedModuleKinds()) {
        Bench bench(kind);
        QVERIFY2(!simulatedModuleSummary(kind).isEmpty(), qPrintable(kind));
        QCOMPARE(bench.module->key(), QStringLiteral("SIM0/Device"));
        QVERIFY(bench.module->getAliasName() != QStringLiteral("Device"));
        addresses.insert(bench.module->moduleAddress());
    }
    QCOMPARE(addresses.size(), 3);
    QVERIFY(!addresses.contains(1)); // the address that is in a request before anybody set one
}

void SimulationModulesTest::listedValuesAreAnswered_data()
{
    QTest::addColumn<int>("axes");
    QTest::addColumn<int>("leastListed");
    QTest::addColumn<bool>("hasMaps");
    QTest::newRow("stepper-3") << 3 << 80 << true;
    QTest::newRow("servo-1") << 1 << 20 << true;
    QTest::newRow("io-block") << 0 << 10 << false;
}

void SimulationModulesTest::listedValuesAreAnswered()
{
    QFETCH(int, axes);
    QFETCH(int, leastListed);
    QFETCH(bool, hasMaps);
    Bench bench(QString::fromLatin1(QTest::currentDataTag()));
    QCOMPARE(bench.module->numberOfAxes(), axes);
    QCOMPARE(bench.module->getParameterMapByName(QStringLiteral("global2")) != nullptr, hasMaps);
    QVERIFY(bench.module->getParameterMapByName(QStringLiteral("axis%1").arg(axes)) == nullptr);

    const QVector<Listed> listed = listedValues(bench);
    QVERIFY(listed.size() >= leastListed);
    QSet<QString> texts;
    QSet<int> requests;
    int writeOnly = 0;
    for (const Listed &entry : listed) {
        QVERIFY2(entry.request.type >= 0 && entry.request.type <= 255, qPrintable(entry.text));
        const Command::Status expected = entry.readable ? Command::Status::Answered : Command::Status::Refused;
        QVERIFY2(bench.ask(entry.request).status() == expected, qPrintable(entry.text));
        texts.insert(entry.text);
        requests.insert((entry.request.command << 16) | (entry.request.motorBank << 8) | entry.request.type);
        writeOnly += entry.readable ? 0 : 1;
    }
    QCOMPARE(texts.size(), listed.size());
    QCOMPARE(requests.size(), listed.size());
    QVERIFY(writeOnly > 0);
}

void SimulationModulesTest::everythingElseIsRefused()
{
    for (const QString &kind : simulatedModuleKinds()) {
        Bench bench(kind);
        QSet<int> readable;
        const auto code = [](const Request &request) {
            return (request.command << 16) | (request.motorBank << 8) | request.type;
        };
        for (const Listed &entry : listedValues(bench)) {
            if (entry.readable) {
                readable.insert(code(entry.request));
                QCOMPARE(bench.ask(entry.request, bench.module->moduleAddress() + 1).status(),
                         Command::Status::Refused);
            }
        }
        for (const int command : {0, 5, 6, 10, 15, 147, 148, 149}) {
            for (int motorBank = 0; motorBank < 5; ++motorBank) {
                for (int type = 0; type < 256; ++type) {
                    const Request request{command, motorBank, type};
                    const bool isAnswered = bench.ask(request).status() == Command::Status::Answered;
                    QVERIFY2(isAnswered == readable.contains(code(request)),
                             qPrintable(QStringLiteral("%1 %2 %3").arg(command).arg(motorBank).arg(type)));
                }
            }
        }
    }
}

void SimulationModulesTest::registersOfEveryShape_data()
{
    QTest::addColumn<int>("channel");
    QTest::newRow("stepper-3") << 1;
    QTest::newRow("io-block") << 2;
}

void SimulationModulesTest::registersOfEveryShape()
{
    QFETCH(int, channel);
    Bench bench(QString::fromLatin1(QTest::currentDataTag()));
    QCOMPARE(bench.module->getChannel(), channel);
    QSet<QString> shapes;
    for (const Register *entry : bench.module->registers()) {
        const auto *const set = qobject_cast<const RegisterSet *>(entry);
        const int width = entry->getWidth();
        if (entry->kind() == Register::Writable) {
            shapes.insert(QStringLiteral("write-only"));
        } else if (set == nullptr) {
            shapes.insert(width > 3 ? QStringLiteral("plain") : QStringLiteral("plain, narrow"));
        } else {
            shapes.insert(set->getFractions().size() <= 4 ? QStringLiteral("few fields")
                                                          : QStringLiteral("many fields"));
            quint32 taken = 0;
            for (const Register *field : set->getFractions()) {
                const quint32 bits = ((1u << field->getWidth()) - 1u) << field->getOffset();
                QVERIFY2((taken & bits) == 0, qPrintable(field->getTitle()));
                QVERIFY2(field->getOffset() + field->getWidth() <= width, qPrintable(field->getTitle()));
                taken |= bits;
                shapes.insert(field->getWidth() > 3 ? QStringLiteral("field") : QStringLiteral("narrow field"));
            }
        }
    }
    QCOMPARE(shapes,
             (QSet<QString>{QStringLiteral("write-only"), QStringLiteral("plain"), QStringLiteral("plain, narrow"),
                            QStringLiteral("few fields"), QStringLiteral("many fields"), QStringLiteral("field"),
                            QStringLiteral("narrow field")}));
}

void SimulationModulesTest::fieldsAgreeWithWhatTheyMirror()
{
    Bench bench(QStringLiteral("stepper-3"));
    bool wasNegative = false;
    bool wasPositive = false;
    for (int i = 0; i < 400; ++i) {
        const QVector<qint32> read = bench.values({{6, 0, 10},
                                                   {6, 0, 50},
                                                   {6, 0, 54},
                                                   {6, 0, 31},
                                                   {6, 0, 0},
                                                   {149, 0, 0x10},
                                                   {149, 0, 0x11},
                                                   {149, 0, 0x13},
                                                   {149, 0, 0x20}});
        QCOMPARE(signedField(read.at(5), 0, 20), read.at(0));
        QCOMPARE(unsignedField(read.at(6), 0, 12), quint32(read.at(1)));
        QCOMPARE(unsignedField(read.at(6), 12, 10), quint32(read.at(2)));
        QCOMPARE(signedField(read.at(7), 0, 16), read.at(3));
        QCOMPARE(read.at(8), read.at(4));
        wasNegative = wasNegative || read.at(0) < -50000;
        wasPositive = wasPositive || read.at(0) > 50000;
    }
    QVERIFY(wasNegative && wasPositive);

    const qint32 coils = bench.values({{149, 0, 0x12}}).first();
    const double size = std::hypot(signedField(coils, 10, 9), signedField(coils, 19, 9));
    QVERIFY2(std::abs(size - 248.0) < 1.0, qPrintable(QString::number(size)));
}

void SimulationModulesTest::sameSeedSameValues_data()
{
    QTest::addColumn<QVector<int>>("noisy"); // command, motor, type
    QTest::newRow("stepper-3") << QVector<int>{6, 2, 30};
    QTest::newRow("servo-1") << QVector<int>{6, 0, 20};
    QTest::newRow("io-block") << QVector<int>{148, 0, 5};
}

void SimulationModulesTest::sameSeedSameValues()
{
    QFETCH(QVector<int>, noisy);
    const QString kind = QLatin1String(QTest::currentDataTag());
    Bench bench(kind, 7);
    Bench again(kind, 7);
    Bench other(kind, 8);
    const Request request{noisy.at(0), noisy.at(1), noisy.at(2)};
    int different = 0;
    for (int i = 0; i < 200; ++i) {
        // Reading more than once in an exchange must not draw more noise.
        const QVector<qint32> values = bench.values({request, request});
        QCOMPARE(values.at(0), values.at(1));
        QCOMPARE(again.values({request}).first(), values.at(0));
        different += other.values({request}).first() != values.at(0) ? 1 : 0;
    }
    QVERIFY2(different > 50, qPrintable(QString::number(different)));
}

void SimulationModulesTest::movesUntilSwitchedOff()
{
    Bench bench(QStringLiteral("stepper-3"));
    QVERIFY(bench.module->isMoving());
    const QVector<Request> positions{{6, 0, 2}, {6, 1, 2}, {6, 2, 2}};
    const QVector<qint32> start = bench.values(positions);
    QVector<qint32> later;
    for (int i = 0; i < 40; ++i) {
        later = bench.values(positions);
    }
    for (int axis = 0; axis < 3; ++axis) {
        QVERIFY2(start.at(axis) != later.at(axis), qPrintable(QString::number(axis)));
    }

    bench.module->setMoving(false);
    QVector<qint32> stopped;
    for (int i = 0; i < 100; ++i) {
        stopped = bench.values(positions);
    }
    QCOMPARE(bench.values(positions), stopped);

    MotionProgram hold;
    hold.offset = 1234.0;
    bench.module->setMotion(1, hold);
    bench.module->setMotion(3, hold); // no such axis
    bench.module->setMotion(-1, hold);
    bench.module->setMoving(true);
    for (int i = 0; i < 200; ++i) {
        later = bench.values(positions);
    }
    QCOMPARE(later.at(1), 1234);
    QCOMPARE(bench.module->motion(1).offset, 1234.0);
    QCOMPARE(bench.module->motion(0).kind, MotionProgram::Kind::Reciprocate);
    QCOMPARE(bench.module->motion(3).offset, 0.0);
}

void SimulationModulesTest::silence()
{
    Bench bench(QStringLiteral("servo-1"));
    const Request elapsed{10, 2, 1};
    bench.module->setSilent(true);
    bench.module->setSilent(false);
    QCOMPARE(bench.ask(elapsed).status(), Command::Status::Answered);
    bench.module->setSilent(true);
    QVERIFY(bench.module->isSilent());
    QCOMPARE(bench.ask(elapsed).status(), Command::Status::Unanswered);
    QCOMPARE(bench.clock.nowMs(), qint64(28)); // it keeps on moving
}

void SimulationModulesTest::modulesLeaveTheirClock()
{
    SimulationClock clock(SimulationClock::Drive::Exchanges);
    const QString kind = QStringLiteral("stepper-3");
    QScopedPointer<SimulatedModule> stays(createModule(kind, QStringLiteral("SIM0/A"), nullptr, &clock, 1));
    QScopedPointer<SimulatedModule> leaves(createModule(kind, QStringLiteral("SIM0/B"), nullptr, &clock, 2));
    leaves.reset();
    stays->commandHandlerInterface()->sendCommandCombos({});
    QCOMPARE(clock.nowMs(), qint64(14));
}

GUARDED_TEST_MAIN(SimulationModulesTest)
#include "SimulationModulesTest.moc"
