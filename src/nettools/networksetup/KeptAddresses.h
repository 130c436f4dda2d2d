#pragma once

#include "nettools/networksetup/DesktopProxies.h"
#include "platform/linux/propertylist/FileLock.h"

#include <memory>
#include <string>
#include <string_view>

namespace velq::nettools
{

/// The addresses of proxies that were switched off, in a file of the person's: velq/proxies/DESKTOP
/// in $XDG_STATE_HOME (~/.local/state), readable for nobody else, as there may be passwords in it.
class KeptAddresses
{
public:
    explicit KeptAddresses(const std::string &desktop);

    /// None when there is no such file. Throws Refusal when it cannot be read.
    ProxyAddresses read() const;
    /// Waits until no other process changes addresses, and keeps them from it for as long as this
    /// object lives. Throws Refusal.
    void lock();
    /// Leaves a file alone that says so already. Throws Refusal.
    void write(const ProxyAddresses &addresses) const;

private:
    std::string m_path;
    std::unique_ptr<propertylist::FileLock> m_lock;
};

/// A line for each, "KIND ADDRESS".
std::string keptText(const ProxyAddresses &addresses);
/// Lines that say nothing of a kind are passed over.
ProxyAddresses keptIn(std::string_view text);

} // namespace velq::nettools
