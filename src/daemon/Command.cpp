#include "daemon/Command.h"

#include "daemon/SupervisedCommand.h"

#include <sys/epoll.h>
#include <system_error>
#include <utility>

namespace velq::daemon
{

namespace
{

// Each byte may become three, and the bus carries 32 MiB.
constexpr size_t mostOutput = size_t{8} * 1024 * 1024;
constexpr size_t mostComplaint = 1024;

// Beyond the grace: a process that the kernel does not let die.
constexpr std::chrono::microseconds lastPatience =
    SupervisedCommand::grace + std::chrono::seconds{1};

uint64_t microseconds(std::chrono::microseconds time)
{
    return static_cast<uint64_t>(time.count());
}

} // namespace

Command::Command(sd_event *loop, const Authorised &authorised, std::chrono::microseconds limit,
                 Finished finished)
    : m_finished(std::move(finished))
    , m_output(loop, mostOutput, [this] { end(Error::OutputTooLarge); })
    , m_error(loop, mostComplaint, nullptr)
    , m_supervisor(authorised, m_output.writingEnd(), m_error.writingEnd())
{
    m_output.closeWritingEnd();
    m_error.closeWritingEnd();

    sd_event_source *source = nullptr;
    const auto onReport = [](sd_event_source *, int, uint32_t, void *self) {
        static_cast<Command *>(self)->onEnded();
        return 0;
    };
    demand(sd_event_add_io(loop, &source, m_supervisor.report(), EPOLLIN, onReport, this),
           "sd_event_add_io");
    m_endSource.reset(source);

    const auto onTime = [](sd_event_source *, uint64_t, void *self) {
        static_cast<Command *>(self)->onTime();
        return 0;
    };
    demand(sd_event_add_time_relative(loop, &source, CLOCK_MONOTONIC, microseconds(limit),
                                      timerAccuracy, onTime, this),
           "sd_event_add_time");
    m_timeSource.reset(source);
}

void Command::onTime()
{
    if (m_endedFor)
        m_supervisor.abandon();
    else
        end(Error::Timeout);
}

void Command::end(Error why)
{
    if (m_endedFor)
        return;
    m_endedFor = why;
    m_supervisor.stop();
    sd_event_source_set_time_relative(m_timeSource.get(), microseconds(lastPatience));
    sd_event_source_set_enabled(m_timeSource.get(), SD_EVENT_ONESHOT);
}

void Command::onEnded()
{
    m_endSource.reset();
    m_timeSource.reset();
    const std::optional<Ending> ending = m_supervisor.ending();
    Outcome outcome;
    outcome.output = m_output.finish();
    outcome.complaint = m_error.finish();
    outcome.failure = failureOf(ending);
    std::exchange(m_finished, nullptr)(std::move(outcome));
}

std::optional<Refusal> Command::failureOf(const std::optional<Ending> &ending) const
{
    if (m_endedFor)
        return Refusal{*m_endedFor, "ended"};
    if (!ending)
        return Refusal{Error::SpawnFailed, "its supervisor was killed"};
    switch (ending->kind) {
    case Ending::Kind::Exited:
        return std::nullopt;
    case Ending::Kind::Signalled:
        return Refusal{Error::SpawnFailed, "ended by signal " + std::to_string(ending->number)};
    case Ending::Kind::NotStarted:
        return Refusal{Error::SpawnFailed, std::generic_category().message(ending->number)};
    }
    return Refusal{Error::SpawnFailed, ""};
}

} // namespace velq::daemon
