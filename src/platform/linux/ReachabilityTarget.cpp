#include "platform/linux/ReachabilityTarget.h"

#include "platform/GlobalQueue.h"
#include "platform/linux/ReachabilityFlags.h"

#include <arpa/inet.h>
#include <cstring>
#include <netdb.h>

namespace velq
{

namespace
{

constexpr in_addr_t zeroAddress = INADDR_ANY;

rtnetlink::Address addressFrom(const sockaddr *from)
{
    rtnetlink::Address address;
    if (from->sa_family == AF_INET) {
        const auto &v4 = *reinterpret_cast<const sockaddr_in *>(from);
        std::memcpy(address.bytes.data(), &v4.sin_addr, sizeof v4.sin_addr);
    } else if (from->sa_family == AF_INET6) {
        const auto &v6 = *reinterpret_cast<const sockaddr_in6 *>(from);
        std::memcpy(address.bytes.data(), &v6.sin6_addr, sizeof v6.sin6_addr);
    }
    address.family = static_cast<uint8_t>(from->sa_family);
    return address;
}

// The flags of the best of the name's addresses; a name that does not resolve is not reachable.
std::optional<SCNetworkReachabilityFlags> flagsOfName(const QByteArray &name)
{
    addrinfo hints{};
    hints.ai_socktype = SOCK_STREAM;
    addrinfo *found = nullptr;
    if (getaddrinfo(name.constData(), nullptr, &hints, &found) != 0)
        return 0;
    const std::unique_ptr<addrinfo, decltype(&freeaddrinfo)> owner(found, &freeaddrinfo);
    for (const addrinfo *each = found; each != nullptr; each = each->ai_next) {
        const auto flags = addressFlags(addressFrom(each->ai_addr));
        if (!flags || *flags != 0)
            return flags;
    }
    return 0;
}

} // namespace

bool ReachabilityTarget::setCallback(SCNetworkReachabilityCallBack callback, void *info)
{
    m_callback = callback;
    m_info = info;
    return true;
}

bool ReachabilityTarget::scheduleWithRunLoop()
{
    if (m_changes != nullptr)
        return true;
    m_changes = NetworkChanges::create();
    if (m_changes == nullptr)
        return false;
    connect(m_changes.get(), &NetworkChanges::changed, this, [this] { look(); });
    m_hasTold = false;
    look();
    return true;
}

bool ReachabilityTarget::unscheduleFromRunLoop()
{
    m_changes.reset();
    return true;
}

void ReachabilityTarget::onFlags(const Flags &flags)
{
    const bool changed = m_hasTold && m_told != flags;
    m_hasTold = true;
    m_told = flags;
    if (changed && m_changes != nullptr && m_callback != nullptr)
        m_callback(this, flags.value_or(0), m_info);
}

AddressTarget::AddressTarget(in_addr address)
    : m_address(address)
{
}

AddressTarget::Flags AddressTarget::getFlags()
{
    switch (ntohl(m_address.s_addr)) {
    case zeroAddress:
        return internetFlags();
    case localLinkNetwork:
        return localLinkFlags();
    default:
        break;
    }
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr = m_address;
    return addressFlags(addressFrom(reinterpret_cast<const sockaddr *>(&address)));
}

void AddressTarget::look()
{
    onFlags(getFlags());
}

NameTarget::NameTarget(QString name)
    : m_name(std::move(name))
    , m_answer(std::make_shared<Answer>())
{
    m_answer->target = this;
}

NameTarget::~NameTarget()
{
    const std::scoped_lock lock(m_answer->mutex);
    m_answer->target = nullptr;
}

NameTarget::Flags NameTarget::getFlags()
{
    return flagsOfName(m_name.toUtf8());
}

// Resolving may take as long as the name server's time-outs: changes meanwhile ask for one more
// look.
void NameTarget::look()
{
    m_lookAgain = m_looking;
    if (m_looking)
        return;
    m_looking = true;
    GlobalQueue::async([answer = m_answer, name = m_name.toUtf8()] { lookUp(answer, name); });
}

void NameTarget::lookUp(const std::shared_ptr<Answer> &answer, const QByteArray &name)
{
    const Flags flags = flagsOfName(name);
    const std::scoped_lock lock(answer->mutex);
    answer->flags = flags;
    if (answer->target != nullptr)
        QMetaObject::invokeMethod(answer->target, "onLooked", Qt::QueuedConnection);
}

void NameTarget::onLooked()
{
    m_looking = false;
    Flags flags;
    {
        const std::scoped_lock lock(m_answer->mutex);
        flags = m_answer->flags;
    }
    const bool lookAgain = m_lookAgain;
    onFlags(flags);
    if (lookAgain)
        look();
}

std::unique_ptr<SCNetworkReachability> SCNetworkReachability::createWithName(const QString &name)
{
    return name.isEmpty() ? nullptr : std::make_unique<NameTarget>(name);
}

std::unique_ptr<SCNetworkReachability>
SCNetworkReachability::createWithAddress(const sockaddr_in *address)
{
    if (address == nullptr || address->sin_family != AF_INET)
        return nullptr;
    return std::make_unique<AddressTarget>(address->sin_addr);
}

} // namespace velq
