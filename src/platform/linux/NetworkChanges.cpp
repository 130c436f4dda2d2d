#include "platform/linux/NetworkChanges.h"

#include <QAbstractEventDispatcher>
#include <QSocketNotifier>

#include <linux/rtnetlink.h>

namespace velq
{

namespace
{

constexpr uint32_t watchedGroups =
    RTMGRP_LINK | RTMGRP_IPV4_IFADDR | RTMGRP_IPV4_ROUTE | RTMGRP_IPV6_IFADDR | RTMGRP_IPV6_ROUTE;

// One plug pulled makes a dozen events within a few milliseconds.
constexpr std::chrono::milliseconds burstLength{10};

} // namespace

std::unique_ptr<NetworkChanges> NetworkChanges::create()
{
    if (QAbstractEventDispatcher::instance() == nullptr)
        return nullptr;
    auto socket = rtnetlink::Socket::open(watchedGroups);
    if (!socket)
        return nullptr;
    return std::unique_ptr<NetworkChanges>(new NetworkChanges(std::move(*socket)));
}

NetworkChanges::NetworkChanges(rtnetlink::Socket socket)
    : m_socket(std::move(socket))
    , m_notifier(std::make_unique<QSocketNotifier>(m_socket.descriptor(), QSocketNotifier::Read))
{
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &NetworkChanges::onReadable);
    m_burst.setSingleShot(true);
    m_burst.setTimerType(Qt::PreciseTimer);
    m_burst.setInterval(burstLength);
    connect(&m_burst, &QTimer::timeout, this, &NetworkChanges::changed);
}

NetworkChanges::~NetworkChanges() = default;

void NetworkChanges::onReadable()
{
    const auto drained = m_socket.drain();
    // A descriptor that cannot be read stays readable: listening on would spin.
    if (drained == rtnetlink::Socket::Drained::Broken)
        m_notifier->setEnabled(false);
    if (drained != rtnetlink::Socket::Drained::Nothing && !m_burst.isActive())
        m_burst.start();
}

} // namespace velq
