#include "support/Waiting.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>

namespace velq::testing
{

bool waitUntil(const std::function<bool()> &condition)
{
    const QDeadlineTimer deadline(std::chrono::seconds(10));
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    return true;
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
