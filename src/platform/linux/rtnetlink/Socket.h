#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

struct mnl_socket;
struct nlmsghdr;

namespace velq::rtnetlink
{

/// A rtnetlink socket: one conversation with the kernel about links, routes and neighbours.
///
/// Owns its descriptor, which is not inherited by children. Not shared between threads; any thread
/// may have its own. Message formats: rtnetlink(7), linux/rtnetlink.h.
class Socket
{
public:
    /// Whether a reader wants the rest of the answer.
    enum class Visit { Continue, Stop };
    using Visitor = std::function<Visit(const nlmsghdr &)>;

    /// What became of the events that were waiting.
    enum class Drained {
        Nothing, ///< no event was waiting
        Events,  ///< at least one event was read and thrown away
        Overrun, ///< the kernel dropped events: whatever was known must be read anew
        Broken,  ///< the socket cannot be read any more
    };

    /// Opens a socket that listens to the multicast `groups` (RTMGRP_… bits; none for requests
    /// only). Nothing when the kernel refuses.
    static std::optional<Socket> open(uint32_t groups = 0);

    /// The descriptor, for poll(2) and notifiers. The socket keeps owning it.
    int descriptor() const;

    /// Sends `request` and hands every message of the answer to `visit` until it says Stop or the
    /// answer ends. False when the kernel refuses the request or the answer does not arrive whole;
    /// what was visited until then must be thrown away. After Stop the socket is good for no
    /// further request.
    bool ask(nlmsghdr *request, const Visitor &visit);

    /// Reads all waiting events without blocking and throws them away: they only say that something
    /// changed.
    Drained drain();

private:
    struct Close {
        void operator()(mnl_socket *socket) const noexcept;
    };
    explicit Socket(mnl_socket *socket);

    std::unique_ptr<mnl_socket, Close> m_socket;
    std::unique_ptr<std::byte[]> m_buffer;
    uint32_t m_sequence = 0;
};

} // namespace velq::rtnetlink
