#pragma once

#include "nettools/networkmanager/NetworkManager.h"
#include "nettools/networkmanager/Profiles.h"
#include "nettools/networksetup/Backend.h"

namespace velq::nettools
{

/// The network as NetworkManager keeps it. Settings are changed in the profile that the port uses,
/// or else would use by itself, or else in a new one.
class NetworkManagerBackend : public Backend
{
public:
    explicit NetworkManagerBackend(NetworkManager manager);

    const std::vector<Port> &ports() const override { return m_ports; }
    std::vector<Service> services() override;
    bool isEnabled(const Port &port) override;
    void setEnabled(const Port &port, bool enabled) override;
    ServiceInfo info(const Port &port) override;
    void setDhcp(const Port &port) override;
    std::vector<std::string> dnsServers(const Port &port) override;
    void setDnsServers(const Port &port, const std::vector<std::string> &servers) override;
    Mtu mtu(const Port &port) override;
    void setMtu(const Port &port, uint32_t mtu) override;
    void order(const std::vector<Port> &first) override;
    void restore(const Port &port) override;

private:
    struct Row {
        Port port;
        int64_t metric;
        bool enabled;
    };
    struct Change {
        Port port;
        ReadProfile profile; ///< as it was
        bool first;          ///< its copy is new
    };

    /// Null for the loopback.
    const Device *deviceOf(const Port &port) const;
    ReadProfile profileToChange(const Port &port);
    /// All but the loopback, the preferred one first.
    std::vector<Row> inOrder() const;
    void change(const Port &port, const Profile &profile, const std::vector<Edit> &edits,
                const std::function<bool(const Device &)> &inEffect);
    void restore(const Port &port, const Device &device, const Profile &profile);
    /// Writes back what was read, and brings that into effect; the copy goes if it was the first.
    void takeBack(const Port &port, const Profile &profile, bool first);
    /// The same as far as it can be done now; false when not even the settings can be written.
    bool tryTakeBack(const Port &port, const Profile &profile, bool first);
    /// Throws the error once that is done, or says that it could not be.
    [[noreturn]] void takeBackAfter(const BusError &error, const Port &port, const Profile &profile,
                                    bool first);
    void writeBack(const Profile &profile, bool first);
    void applyAsItIs(const Port &port, const Profile &profile);
    void setMetric(const Port &port, int64_t metric, std::vector<Change> &changed);

    NetworkManager m_manager;
    Profiles m_profiles;
    std::vector<Port> m_ports;
};

/// Null when NetworkManager does not run. Throws Refusal when it runs and does not answer.
std::unique_ptr<Backend> openNetworkManager();

} // namespace velq::nettools
