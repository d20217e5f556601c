#include "application/EndSignals.h"

#include <QSocketNotifier>
#include <QtGlobal>

#ifdef Q_OS_UNIX
#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>
#endif

namespace
{

EndSignals *theInstance = nullptr;

#ifdef Q_OS_UNIX

constexpr std::array<int, 3> endingSignals = {SIGINT, SIGTERM, SIGHUP};
std::array<bool, 3> isHandled = {};
std::array<int, 2> wakePipe = {-1, -1}; // to read from, to write to

void restoreDefaults()
{
    for (size_t i = 0; i < endingSignals.size(); ++i) {
        if (isHandled[i]) {
            std::signal(endingSignals[i], SIG_DFL);
        }
    }
}

/// Calls nothing but what is safe in a signal handler.
void handle(int number)
{
    const int savedError = errno;
    restoreDefaults(); // a second signal means: at once
    const auto byte = static_cast<unsigned char>(number);
    [[maybe_unused]] const auto written = write(wakePipe[1], &byte, 1);
    errno = savedError;
}

bool makeWakePipe()
{
    if (pipe(wakePipe.data()) != 0) {
        return false;
    }
    for (const int descriptor : wakePipe) {
        fcntl(descriptor, F_SETFL, O_NONBLOCK);
        fcntl(descriptor, F_SETFD, FD_CLOEXEC);
    }
    return true;
}

void installHandlers()
{
    struct sigaction action = {};
    action.sa_handler = handle;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    for (const int number : endingSignals) {
        sigaddset(&action.sa_mask, number); // blocked meanwhile, so that a second signal gets the default action
    }
    for (size_t i = 0; i < endingSignals.size(); ++i) {
        struct sigaction current = {};
        isHandled[i] = sigaction(endingSignals[i], nullptr, &current) == 0 && current.sa_handler != SIG_IGN &&
                       sigaction(endingSignals[i], &action, nullptr) == 0;
    }
}

#endif

} // namespace

EndSignals::EndSignals(QObject *parent) : QObject(parent)
{
    theInstance = this;
#ifdef Q_OS_UNIX
    if (!makeWakePipe()) {
        return; // the signals keep their defaults
    }
    m_notifier = new QSocketNotifier(wakePipe[0], QSocketNotifier::Read, this);
    // By name: the signal has other arguments since Qt 5.15.
    connect(m_notifier, SIGNAL(activated(int)), this, SLOT(read()));
    installHandlers();
#endif
}

EndSignals::~EndSignals()
{
    theInstance = nullptr;
#ifdef Q_OS_UNIX
    if (m_notifier == nullptr) {
        return;
    }
    restoreDefaults();
    delete m_notifier;
    for (int &descriptor : wakePipe) {
        close(descriptor);
        descriptor = -1;
    }
#endif
}

EndSignals *EndSignals::instance()
{
    return theInstance;
}

int EndSignals::exitCodeOr(int exitCode) const
{
    constexpr int signalBase = 128;
    return m_received == 0 ? exitCode : signalBase + m_received;
}

void EndSignals::read()
{
#ifdef Q_OS_UNIX
    unsigned char number = 0;
    if (::read(wakePipe[0], &number, 1) == 1) {
        m_received = number;
        emit received();
    }
#endif
}
