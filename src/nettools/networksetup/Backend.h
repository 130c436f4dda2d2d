#pragma once

#include "nettools/networksetup/Port.h"
#include "nettools/networksetup/ServiceText.h"

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace velq::nettools
{

/// Why something could not be done, as a sentence for a person.
class Refusal : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// What keeps the network of this computer, and how it is asked. One thread.
///
/// Everything throws Refusal; a change that throws has left the settings as they were, or says in
/// the sentence what has remained. A change returns when it has taken effect.
class Backend
{
public:
    Backend() = default;
    Backend(const Backend &) = delete;
    Backend &operator=(const Backend &) = delete;
    virtual ~Backend() = default;

    /// All ports, named, loopback last.
    virtual const std::vector<Port> &ports() const = 0;
    /// All ports but the loopback; the one whose routes are preferred comes first.
    virtual std::vector<Service> services() = 0;
    /// Whether the system would use the port by itself.
    virtual bool isEnabled(const Port &port) = 0;
    virtual void setEnabled(const Port &port, bool enabled) = 0;
    virtual ServiceInfo info(const Port &port) = 0;
    virtual void setDhcp(const Port &port) = 0;
    /// Those that were set; not those that came with a lease.
    virtual std::vector<std::string> dnsServers(const Port &port) = 0;
    /// None gives the choice back to the lease.
    virtual void setDnsServers(const Port &port, const std::vector<std::string> &servers) = 0;
    virtual Mtu mtu(const Port &port) = 0;
    virtual void setMtu(const Port &port, uint32_t mtu) = 0;
    /// Prefers the routes of these, in this order, to those of all others.
    virtual void order(const std::vector<Port> &first) = 0;
    /// Takes back all changes to the settings that the port uses now.
    virtual void restore(const Port &port) = 0;
};

/// NetworkManager when it runs, else the kernel. Starts nothing.
std::unique_ptr<Backend> openBackend();

} // namespace velq::nettools
