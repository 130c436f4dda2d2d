#pragma once

#include "daemon/Handles.h"
#include "daemon/Pipe.h"

#include <cstddef>
#include <functional>
#include <string>

namespace velq::daemon
{

/// Reads one of a command's streams while it runs and keeps its beginning.
class OutputReader
{
public:
    /// Keeps `limit` bytes. `overflowed` is called once, when there were more; reading goes on, so
    /// that the command is never stuck.
    OutputReader(sd_event *loop, size_t limit, std::function<void()> overflowed);

    /// For the command; closed by closeWritingEnd() once it has it.
    const posix::Descriptor &writingEnd() const { return m_pipe.writingEnd; }
    void closeWritingEnd() { m_pipe.writingEnd.reset(); }

    /// What has come, with what the pipe holds at this moment; the end of reading. Waits for
    /// nobody who still has the pipe.
    std::string finish();

private:
    void onReadable();
    bool readSome(size_t atMost);

    Pipe m_pipe;
    size_t m_limit;
    std::function<void()> m_overflowed;
    std::string m_kept;
    EventSource m_source;
};

} // namespace velq::daemon
