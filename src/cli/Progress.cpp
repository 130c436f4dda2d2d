#include "cli/Progress.h"

#include "common/Log.h"
#include "platform/MainQueue.h"
#include "platform/StandardError.h"

#include <chrono>

namespace velq::cli
{

namespace
{

using namespace std::chrono_literals;

} // namespace

Progress::Progress(bool quiet)
    : m_quiet(quiet)
    , m_counts(!quiet && StandardError::isTerminal())
{
}

Progress::~Progress()
{
    end();
}

void Progress::begin(const QString &what)
{
    end();
    if (m_quiet)
        return;
    log(what);
    if (!m_counts)
        return;
    MainQueue::sync([this] {
        m_begun.start();
        m_timer = std::make_unique<QTimer>();
        QObject::connect(m_timer.get(), &QTimer::timeout, [this] { draw(); });
        show();
    });
}

void Progress::end()
{
    if (!m_counts)
        return;
    MainQueue::sync([this] {
        hide();
        m_timer.reset();
    });
}

void Progress::hide()
{
    if (m_timer == nullptr)
        return;
    m_timer->stop();
    if (m_drawn > 0)
        StandardError::write('\r' + QByteArray(m_drawn, ' ') + '\r');
    m_drawn = 0;
}

void Progress::show()
{
    if (m_timer != nullptr)
        m_timer->start(1s);
}

void Progress::draw()
{
    const QByteArray seconds = QByteArray::number((m_begun.elapsed() + 500) / 1000) + " s";
    StandardError::write('\r' + seconds);
    m_drawn = seconds.size();
}

} // namespace velq::cli
