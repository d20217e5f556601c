// What a Modbus device answers, from the gate before the protocol library to the value of a parameter.

#include "Readers.h"

#include "modules/modbus/AnswerGate.h"
#include "modules/modbus/ModbusLink.h"
#include "modules/modbus/NumberFormat.h"

#include <sys/socket.h>
#include <unistd.h>

#include <array>

namespace
{

constexpr int requestBytes = 12;
constexpr int unitNumber = 1;

/// A link as that over TCP, to the other end of a pair of sockets. Requests are numbered from 1 on.
class PairLink : public ModbusLink
{
public:
    explicit PairLink(int device) : ModbusLink(ConnectionSettings()), m_device(device) {}

    ~PairLink() override
    {
        PairLink::close();
    }

    ConnectionTrouble open() override
    {
        int ends[2] = {-1, -1};
        socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends);
        m_gate = std::make_unique<AnswerGate>(m_device, ends[1], &m_transaction, [] {});
        m_context = modbus_new_tcp("127.0.0.1", 1); // never connects: the socket is given
        modbus_set_socket(m_context, ends[0]);
        return {};
    }

    void close() override
    {
        ModbusLink::close();
        m_gate.reset();
    }

    ConnectionTrouble check() override
    {
        return m_gate->fault();
    }

    int answerTimeoutMs(const RegisterSpan & /*span*/) const override
    {
        return 500;
    }

protected:
    ConnectionTrouble prepare(int /*unit*/, const RegisterSpan & /*span*/) override
    {
        return {};
    }

    ConnectionTrouble confirm() override
    {
        return {};
    }

    ConnectionTrouble recover(const ConnectionTrouble &trouble, int /*unit*/, const RegisterSpan & /*span*/) override
    {
        return trouble;
    }

private:
    const int m_device;
    unsigned m_transaction = 0;
    std::unique_ptr<AnswerGate> m_gate;
};

/// Waits for one request, answers with \a bytes, and sends nothing more.
void answer(int socket, const QByteArray &bytes)
{
    std::array<char, requestBytes> request{};
    recv(socket, request.data(), request.size(), MSG_WAITALL);
    send(socket, bytes.constData(), static_cast<std::size_t>(bytes.size()), MSG_NOSIGNAL);
    shutdown(socket, SHUT_WR);
}

void decode(const QVector<quint16> &words)
{
    NumberFormat format;
    format.scale = 0.1;
    for (int kind = 0; kind <= static_cast<int>(NumberFormat::Type::Float32); ++kind) {
        format.type = static_cast<NumberFormat::Type>(kind);
        for (const bool isSwapped : {false, true}) {
            format.isLowByteFirst = format.isLowWordFirst = isSwapped;
            for (int at = 0; at + format.words() <= words.size(); ++at) {
                (void)format.value(words.constData() + at);
                (void)bitField(format.rawBits(words.constData() + at), 3, 5, isSwapped);
            }
        }
    }
}

} // namespace

QByteArray answerSample()
{
    return QByteArray::fromHex("030200010000000701030401020304"); // two holding registers; no. 1, 7 bytes, unit 1
}

QString readAnswer(const QByteArray &bytes)
{
    const auto table = static_cast<ModbusTable>(bytes.isEmpty() ? 0 : bytes.at(0) & 3);
    const auto count = static_cast<quint16>(bytes.size() < 2 ? 1 : qMax(1, bytes.at(1) & 0x7F));
    const RegisterSpan span{table, 7, qMin(count, static_cast<quint16>(maximumCount(table)))};
    int ends[2] = {-1, -1};
    socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends);
    std::thread device(answer, ends[0], bytes.mid(2));
    QVector<quint16> words;
    ConnectionTrouble trouble;
    {
        PairLink link(ends[1]);
        link.open();
        trouble = link.read(unitNumber, span, &words);
    }
    device.join();
    close(ends[0]);
    const bool isRead = trouble.kind == ConnectionTrouble::Kind::None;
    if (isRead != (words.size() == span.count)) {
        return "not as many words\nas were asked for";
    }
    decode(words);
    return trouble.words();
}
