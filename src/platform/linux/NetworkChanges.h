#pragma once

#include "platform/linux/rtnetlink/Socket.h"

#include <QObject>
#include <QTimer>

class QSocketNotifier;

namespace velq
{

/// The kernel's events about links, addresses and routes, several in a burst told as one.
///
/// Belongs to the thread that made it and tells through that thread's event loop.
class NetworkChanges : public QObject
{
    Q_OBJECT

public:
    /// Null when the kernel refuses or the calling thread has no event loop.
    static std::unique_ptr<NetworkChanges> create();
    ~NetworkChanges() override;

Q_SIGNALS:
    /// Something changed since the last signal, or events were lost: read the state anew.
    void changed();

private:
    explicit NetworkChanges(rtnetlink::Socket socket);
    void onReadable();

    rtnetlink::Socket m_socket;
    std::unique_ptr<QSocketNotifier> m_notifier;
    QTimer m_burst;
};

} // namespace velq
