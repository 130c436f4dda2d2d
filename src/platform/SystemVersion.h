#pragma once

#include <QString>

namespace velq
{

/// The version of the running system: three integers, 0 for each one that the system does not
/// state.
struct SystemVersion {
    int majorVersion = 0;
    int minorVersion = 0;
    int patchVersion = 0;

    /// Asks the system. On Linux: VERSION_ID of os-release(5). Any thread.
    static SystemVersion current();

    /// Reads "12", "10.9" or "11.0.1"; what is no number counts as 0.
    static SystemVersion fromText(const QString &text);

    bool operator==(const SystemVersion &) const = default;
};

} // namespace velq
