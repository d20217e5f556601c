#include "StormModule.h"

#include "Report.h"

#include "host/ParameterType.h"
#include "host/RegisterSet.h"

#include <QDeadlineTimer>
#include <QThread>

#include <limits>
#include <vector>

namespace
{

qint64 sumOfExchanges = 0;
qint64 deadExchanges = 0;
qint64 virtualNs = 1;
bool isTimeVirtual = false;

/// Reachable, so that leak checkers do not report them.
std::vector<std::unique_ptr<StormChannel>> &allChannels()
{
    static auto *const channels = new std::vector<std::unique_ptr<StormChannel>>;
    return *channels;
}

StormChannel *makeChannel()
{
    auto &channels = allChannels();
    channels.push_back(std::make_unique<StormChannel>());
    return channels.back().get();
}

const char *const oddNames[] = {"position",
                                "",
                                "\xc3\xa4\xe2\x82\xac \xf0\x9f\x99\x82",
                                "a;b;\"c\"",
                                "  ",
                                "%1 %2 %n",
                                "<b>&amp;</b>",
                                "0123456789012345678901234567890123456789012345678901234567890123456789"};

} // namespace

void StormChannel::sendCommandCombos(QList<CommandCombo *> combos)
{
    ++exchanges;
    ++sumOfExchanges;
    deadExchanges += isDead ? 1 : 0;
    CommandHandlerInterface::sendCommandCombos(combos);
    if (manner == Manner::Babbling) {
        for (CommandCombo *const combo : qAsConst(combos)) {
            m_noise = m_noise * 1664525U + 1013904223U;
            combo->reply.setAddress(static_cast<unsigned char>(m_noise >> 24U));
            combo->reply.setCommand(static_cast<unsigned char>(m_noise >> 16U));
            combo->reply.setType(static_cast<unsigned char>(m_noise >> 8U));
            combo->reply.setValue(static_cast<qint32>(m_noise));
        }
    }
    if (everyExchange) {
        everyExchange();
    }
    if (onExchange) {
        std::exchange(onExchange, nullptr)();
    }
}

qint64 StormChannel::allExchanges()
{
    return sumOfExchanges;
}

qint64 StormChannel::exchangesWithTheDead()
{
    return deadExchanges;
}

void StormChannel::advance(int ms)
{
    isTimeVirtual = ms >= 0;
    virtualNs += isTimeVirtual ? qint64{ms} * 1000000 : 0;
}

bool StormChannel::transact(const Command &request, Command &reply, const QDeadlineTimer &deadline)
{
    const qint64 remainingMs = qMax<qint64>(0, deadline.remainingTime());
    const qint64 waitMs = manner == Manner::Silent && answerMs > 0 ? remainingMs : qMin<qint64>(answerMs, remainingMs);
    if (waitMs > 0) {
        QThread::msleep(static_cast<unsigned long>(waitMs));
    }
    if (manner == Manner::Silent || remainingMs < answerMs) {
        return false;
    }
    if (answer) {
        reply.setValue(answer(request));
        return true;
    }
    m_noise = m_noise * 1664525U + 1013904223U;
    const auto value = static_cast<qint32>(m_noise >> 16U) % 2000 + request.type();
    const bool isExtreme = m_noise % 97U == 0U;
    reply.setValue(!isExtreme         ? value
                   : m_noise & 0x800U ? std::numeric_limits<qint32>::min()
                                      : std::numeric_limits<qint32>::max());
    return true;
}

qint64 StormChannel::nowNs() const
{
    return isTimeVirtual ? virtualNs : CommandHandlerInterface::nowNs();
}

StormModule::StormModule(const QString &key, quint32 shape)
    : ScriptedModule(key, shape % 16U == 0U ? 0 : 1 + static_cast<int>(shape / 4U % 3U),
                     static_cast<unsigned char>(shape % 255U), QString::fromUtf8(oddNames[shape % 8U]))
    , channel(makeChannel())
    , m_shape(shape)
{
    channelNumber = static_cast<int>(shape % 2U);
    const auto add = [this](const QString &group, int number, const QString &name) {
        addParameter(group, filled("par::%1", number), number, name);
    };
    for (int axis = 0; axis < numberOfAxes(); ++axis) {
        for (int number = 0; number < 6; ++number) {
            add(filled("axis%1", axis), number * 51,
                QString::fromUtf8(oddNames[(shape + static_cast<quint32>(number)) % 8U]));
        }
    }
    for (const char *const group :
         {"global2", ParameterType::DigitalInput, ParameterType::DigitalOutput, ParameterType::AnalogInput}) {
        if ((shape >>= 1U) & 1U) {
            add(group, 3, group);
        }
    }
    for (quint32 index = 0; index < m_shape / 16U % 5U; ++index) {
        auto *const set = new RegisterSet(static_cast<int>(index * 60U), 32, filled("Status %1", index), QString(),
                                          Register::Readable, this);
        for (quint32 field = 0; field < index; ++field) {
            set->addFraction(static_cast<int>(field * 8U), static_cast<int>(4U + field), "Load");
        }
        registerList.append(set);
    }
}

StormModule::~StormModule()
{
    channel->isDead = true;
    channel->onExchange = nullptr;
}

QString StormModule::getAliasName() const
{
    return QString::fromUtf8(oddNames[m_shape / 8U % 8U]);
}

CommandHandlerInterface *StormModule::commandHandlerInterface()
{
    return channel;
}
