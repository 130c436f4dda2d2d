#pragma once

#include <QDBusConnection>

namespace velq::testing
{

/// Another member of the test's private bus, for as long as it lives. One at a time.
class SomebodyElse
{
public:
    SomebodyElse();
    SomebodyElse(const SomebodyElse &) = delete;
    SomebodyElse &operator=(const SomebodyElse &) = delete;
    ~SomebodyElse();

    QDBusConnection connection() const;
    /// Sends a signal to whoever listens.
    void emitSignal(const char *path, const char *interface, const char *member,
                    const QVariantList &arguments) const;
};

} // namespace velq::testing
