#include "platform/TerminationSignals.h"

#include <QSocketNotifier>

#include <csignal>
#include <sys/signalfd.h>
#include <unistd.h>

namespace velq
{

namespace
{

bool isIgnored(int signal)
{
    struct sigaction action = {};
    return sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

sigset_t endingSignals()
{
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, SIGTERM);
    sigaddset(&set, SIGINT);
    if (!isIgnored(SIGHUP))
        sigaddset(&set, SIGHUP);
    return set;
}

} // namespace

void TerminationSignals::block()
{
    const sigset_t set = endingSignals();
    pthread_sigmask(SIG_BLOCK, &set, nullptr);
}

TerminationSignals::TerminationSignals(QObject *parent)
    : QObject(parent)
{
    const sigset_t set = endingSignals();
    m_descriptor = signalfd(-1, &set, SFD_CLOEXEC | SFD_NONBLOCK);
    if (m_descriptor < 0) {
        // Better ended abruptly than not at all.
        pthread_sigmask(SIG_UNBLOCK, &set, nullptr);
        return;
    }
    m_notifier = std::make_unique<QSocketNotifier>(m_descriptor, QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &TerminationSignals::onReadable);
}

TerminationSignals::~TerminationSignals()
{
    m_notifier.reset();
    if (m_descriptor >= 0)
        close(m_descriptor);
}

// Inherited, unlike the mask. What is blocked here arrives here all the same.
void TerminationSignals::spareChildren(bool spare)
{
    (void)std::signal(SIGINT, spare ? SIG_IGN : SIG_DFL);
}

void TerminationSignals::endBy(int signal)
{
    (void)std::signal(signal, SIG_DFL);
    (void)raise(signal);
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, signal);
    pthread_sigmask(SIG_UNBLOCK, &set, nullptr);
    _exit(128 + signal);
}

void TerminationSignals::onReadable()
{
    signalfd_siginfo information{};
    if (read(m_descriptor, &information, sizeof information) == sizeof information)
        Q_EMIT received(static_cast<int>(information.ssi_signo));
}

} // namespace velq
