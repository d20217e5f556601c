#include "GuardedTest.h"
#include "ModbusProbe.h"
#include "OtherPrograms.h"

#include <QFile>
#include <QProcess>
#include <QStandardPaths>

#include <memory>

namespace
{

constexpr int startLimitMs = 20000;
constexpr int baud = 19200;

using Process = std::unique_ptr<QProcess, void (*)(QProcess *)>;

void end(QProcess *process)
{
    process->kill();
    process->waitForFinished();
    delete process;
}

/// A running program; null when there is no such program.
Process started(const QString &name, const QStringList &arguments)
{
    const QString path = QStandardPaths::findExecutable(name);
    if (path.isEmpty()) {
        return {nullptr, end};
    }
    Process process(new QProcess, end);
    process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process->start(path, arguments);
    process->waitForStarted();
    return process;
}

RegisterSpan pairAt(int address, ModbusTable table = ModbusTable::HoldingRegister)
{
    return {table, static_cast<quint16>(address), 2};
}

} // namespace

/// Servers that others have written.
class ModbusServersTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void readsOverTcp();
    void readsOverSerialLine();

private:
    Process server(const QStringList &arguments, int *port) const;
};

Process ModbusServersTest::server(const QStringList &arguments, int *port) const
{
    const QString python = pythonWithServer();
    if (python.isEmpty()) {
        return {nullptr, end};
    }
    Process process = started(python, QStringList{QStringLiteral(SERVER_SCRIPT)} + arguments);
    QByteArray line;
    while (!line.endsWith('\n') && process->waitForReadyRead(startLimitMs)) {
        line += process->readLine();
    }
    *port = line.mid(line.indexOf(' ')).trimmed().toInt();
    return process;
}

void ModbusServersTest::readsOverTcp()
{
    int port = 0;
    const Process device = server({QStringLiteral("tcp")}, &port);
    SKIP_WITHOUT(device, "python3-pymodbus");
    ModbusProbe joined(ModbusProbe::tcp(static_cast<quint16>(port)), {pairAt(10), pairAt(16)});
    ModbusProbe apart(ModbusProbe::tcp(static_cast<quint16>(port)),
                      {pairAt(10, ModbusTable::InputRegister), pairAt(400, ModbusTable::InputRegister)});
    QVERIFY(waitUntil([&] { return joined.ask() && apart.ask(); }));
    QVERIFY(waitUntil([&] { return joined.ask() && joined.statistics().answeredExchanges > 50; }));
    QCOMPARE(joined.mistake(), QString());
    QCOMPARE(apart.mistake(), QString());

    // The server drops requests to a unit that it does not have.
    ConnectionSettings elsewhere = ModbusProbe::tcp(static_cast<quint16>(port));
    elsewhere.unit = 9;
    ModbusProbe missing(elsewhere, {pairAt(10)});
    QVERIFY(waitUntil([&] { return !missing.ask() && missing.channel.isSilenced(); }));
    QVERIFY2(missing.channel.state().trouble.contains(QLatin1String("No answer. Is the unit right?")),
             qPrintable(missing.channel.state().trouble));
}

void ModbusServersTest::readsOverSerialLine()
{
    const QString here = temporaryPath(QStringLiteral("here"));
    const QString there = temporaryPath(QStringLiteral("there"));
    const auto terminal = [](const QString &link) { return QStringLiteral("pty,rawer,link=") + link; };
    const Process cable = started(QStringLiteral("socat"), {terminal(here), terminal(there)});
    SKIP_WITHOUT(cable, "socat");
    QVERIFY(waitUntil([&] { return QFile::exists(here) && QFile::exists(there); }));
    int port = 0;
    const Process device = server({QStringLiteral("serial"), there, QString::number(baud)}, &port);
    SKIP_WITHOUT(device, "python3-pymodbus");

    ModbusProbe probe(ModbusProbe::serial(here, baud), {pairAt(10), pairAt(400)});
    QVERIFY(waitUntil([&] { return probe.ask(); }));
    QVERIFY(waitUntil([&] { return probe.ask() && probe.statistics().answeredExchanges > 50; }));
    QCOMPARE(probe.mistake(), QString());
}

GUARDED_TEST_MAIN(ModbusServersTest)
#include "ModbusServersTest.moc"
