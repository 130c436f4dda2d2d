#include "platform/linux/rtnetlink/Socket.h"

#include <libmnl/libmnl.h>
#include <linux/netlink.h>

#include <cerrno>
#include <sys/socket.h>

namespace velq::rtnetlink
{

namespace
{

// The kernel fills at most this much per read of a dump.
constexpr size_t bufferSize = 32768;

struct Answer {
    const Socket::Visitor &visit;
    bool stopped = false;
    bool interrupted = false;
};

int onMessage(const nlmsghdr *message, void *data)
{
    auto &answer = *static_cast<Answer *>(data);
    if ((message->nlmsg_flags & NLM_F_DUMP_INTR) != 0)
        answer.interrupted = true;
    if (answer.visit(*message) == Socket::Visit::Continue)
        return MNL_CB_OK;
    answer.stopped = true;
    return MNL_CB_STOP;
}

} // namespace

void Socket::Close::operator()(mnl_socket *socket) const noexcept
{
    mnl_socket_close(socket);
}

Socket::Socket(mnl_socket *socket)
    : m_socket(socket)
    , m_buffer(std::make_unique_for_overwrite<std::byte[]>(bufferSize))
{
}

std::optional<Socket> Socket::open(uint32_t groups)
{
    mnl_socket *raw = mnl_socket_open2(NETLINK_ROUTE, SOCK_CLOEXEC);
    if (raw == nullptr)
        return std::nullopt;
    Socket socket(raw);
    if (mnl_socket_bind(raw, groups, MNL_SOCKET_AUTOPID) < 0)
        return std::nullopt;
    // Without strict checking the kernel ignores a dump's filters; older kernels lack it, and then
    // the readers' own tests do the filtering.
    int on = 1;
    (void)mnl_socket_setsockopt(raw, NETLINK_GET_STRICT_CHK, &on, sizeof on);
    return socket;
}

int Socket::descriptor() const
{
    return mnl_socket_get_fd(m_socket.get());
}

bool Socket::ask(nlmsghdr *request, const Visitor &visit)
{
    request->nlmsg_seq = ++m_sequence;
    if (mnl_socket_sendto(m_socket.get(), request, request->nlmsg_len) < 0)
        return false;

    Answer answer{visit};
    const bool dump = (request->nlmsg_flags & NLM_F_DUMP) == NLM_F_DUMP;
    const unsigned port = mnl_socket_get_portid(m_socket.get());
    while (true) {
        const ssize_t read = mnl_socket_recvfrom(m_socket.get(), m_buffer.get(), bufferSize);
        if (read < 0 && errno == EINTR)
            continue;
        if (read <= 0)
            return false;
        const int state = mnl_cb_run(m_buffer.get(), static_cast<size_t>(read), m_sequence, port,
                                     onMessage, &answer);
        if (answer.stopped)
            return true;
        if (state < 0)
            return false;
        if (state == MNL_CB_STOP || !dump)
            return !answer.interrupted;
    }
}

Socket::Drained Socket::drain()
{
    auto drained = Drained::Nothing;
    while (true) {
        const ssize_t read = recv(descriptor(), m_buffer.get(), bufferSize, MSG_DONTWAIT);
        if (read > 0)
            drained = drained == Drained::Overrun ? drained : Drained::Events;
        else if (read == 0)
            return Drained::Broken;
        else if (errno == ENOBUFS)
            drained = Drained::Overrun;
        else if (errno != EINTR)
            return errno == EAGAIN || errno == EWOULDBLOCK ? drained : Drained::Broken;
    }
}

} // namespace velq::rtnetlink
