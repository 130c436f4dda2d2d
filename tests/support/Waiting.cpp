#include "support/Waiting.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>

#include <sys/wait.h>

namespace velq::testing
{

bool waitUntil(const std::function<bool()> &condition)
{
    const QDeadlineTimer deadline(std::chrono::seconds(40));
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    return true;
}

bool hasExited(pid_t child)
{
    int status = 0;
    return waitUntil([&] { return waitpid(child, &status, WNOHANG) == child; })
        && WIFEXITED(status);
}

void settle()
{
    for (int round = 0; round < 3; ++round) {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

} // namespace velq::testing
