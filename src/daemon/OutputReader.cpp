#include "daemon/OutputReader.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <sys/epoll.h>
#include <sys/ioctl.h>
#include <utility>

namespace velq::daemon
{

namespace
{

constexpr size_t pieceSize = 65536;

} // namespace

OutputReader::OutputReader(sd_event *loop, size_t limit, std::function<void()> overflowed)
    : m_limit(limit)
    , m_overflowed(std::move(overflowed))
{
    sd_event_source *source = nullptr;
    const auto onEvent = [](sd_event_source *, int, uint32_t, void *self) {
        static_cast<OutputReader *>(self)->onReadable();
        return 0;
    };
    demand(sd_event_add_io(loop, &source, m_pipe.readingEnd.get(), EPOLLIN, onEvent, this),
           "sd_event_add_io");
    m_source.reset(source);
}

void OutputReader::onReadable()
{
    if (!readSome(pieceSize))
        m_source.reset();
}

// False at the end, and when there is nothing.
bool OutputReader::readSome(size_t atMost)
{
    std::array<char, pieceSize> piece{};
    const ssize_t count =
        read(m_pipe.readingEnd.get(), piece.data(), std::min(atMost, piece.size()));
    if (count <= 0)
        return count < 0 && errno == EINTR;
    const size_t room = m_limit - m_kept.size();
    m_kept.append(piece.data(), std::min(room, static_cast<size_t>(count)));
    if (static_cast<size_t>(count) > room && m_overflowed)
        std::exchange(m_overflowed, nullptr)();
    return true;
}

std::string OutputReader::finish()
{
    int held = 0;
    if (ioctl(m_pipe.readingEnd.get(), FIONREAD, &held) == 0) {
        for (auto left = static_cast<size_t>(held); left > 0; left -= std::min(left, pieceSize)) {
            if (!readSome(left))
                break;
        }
    }
    m_source.reset();
    m_pipe.readingEnd.reset();
    return std::move(m_kept);
}

} // namespace velq::daemon
