#include "daemon/Journal.h"

#include <cstring>
#include <sys/socket.h>
#include <sys/un.h>
#include <utility>

namespace velq::daemon
{

void JournalRecord::add(std::string_view field, std::string_view value)
{
    m_bytes.append(field).append(1, '=').append(value).append(1, '\n');
}

Journal::Journal(std::string socketPath)
    : m_socketPath(std::move(socketPath))
    , m_socket(socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0))
{
}

bool Journal::send(const JournalRecord &record) const
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (m_socketPath.size() >= sizeof address.sun_path)
        return false;
    std::memcpy(address.sun_path, m_socketPath.data(), m_socketPath.size());
    // Addressed anew each time: a journal that was restarted has another socket of that name.
    const ssize_t sent = sendto(m_socket.get(), record.bytes().data(), record.bytes().size(),
                                MSG_DONTWAIT | MSG_NOSIGNAL,
                                reinterpret_cast<const sockaddr *>(&address), sizeof address);
    return sent == static_cast<ssize_t>(record.bytes().size());
}

} // namespace velq::daemon
