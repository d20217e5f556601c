#include "GuardedTest.h"
#include "ModbusProbe.h"
#include "OtherPrograms.h"

#include <memory>

namespace
{

constexpr int startLimitMs = 20000;
constexpr int serversBaud = 19200;

using Process = std::unique_ptr<QProcess, void (*)(QProcess *)>;

void endProgram(QProcess *process)
{
    process->kill();
    process->waitForFinished();
    delete process;
}

/// A running program; null when there is no such program.
Process startedProgram(const QString &name, const QStringList &arguments)
{
    const QString path = QStandardPaths::findExecutable(name);
    if (path.isEmpty()) {
        return {nullptr, endProgram};
    }
    Process process(new QProcess, endProgram);
    process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process->start(path, arguments);
    process->waitForStarted();
    return process;
}

} // namespace

/// Servers that others have written.
class ModbusServersTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void readsOverTcp()
    {
        int port = 0;
        const Process device = server({"tcp"}, &port);
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
        QVERIFY2(missing.channel.state().trouble.contains("No answer. Is the unit right?"),
                 qPrintable(missing.channel.state().trouble));
    }

    void readsOverSerialLine()
    {
        const QString here = temporaryPath("here");
        const QString there = temporaryPath("there");
        const auto terminal = [](const QString &link) { return QString("pty,rawer,link=") + link; };
        const Process cable = startedProgram("socat", {terminal(here), terminal(there)});
        SKIP_WITHOUT(cable, "socat");
        QVERIFY(waitUntil([&] { return QFile::exists(here) && QFile::exists(there); }));
        int port = 0;
        const Process device = server({"serial", there, QString::number(serversBaud)}, &port);
        SKIP_WITHOUT(device, "python3-pymodbus");

        ModbusProbe probe(ModbusProbe::serial(here, serversBaud), {pairAt(10), pairAt(400)});
        QVERIFY(waitUntil([&] { return probe.ask(); }));
        QVERIFY(waitUntil([&] { return probe.ask() && probe.statistics().answeredExchanges > 50; }));
        QCOMPARE(probe.mistake(), QString());
    }

private:
    Process server(const QStringList &arguments, int *port) const
    {
        const QString python = pythonWithServer();
        if (python.isEmpty()) {
            return {nullptr, endProgram};
        }
        Process process = startedProgram(python, QStringList{SERVER_SCRIPT} + arguments);
        QByteArray line;
        while (!line.endsWith('\n') && process->waitForReadyRead(startLimitMs)) {
            line += process->readLine();
        }
        *port = line.mid(line.indexOf(' ')).trimmed().toInt();
        return process;
    }
};

GUARDED_TEST(ModbusServersTest)
#include "ModbusServersTest.moc"
