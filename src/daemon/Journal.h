#pragma once

#include "platform/linux/posix/Descriptor.h"

#include <string>
#include <string_view>

namespace velq::daemon
{

/// One record in the journal's own form, built field by field.
class JournalRecord
{
public:
    /// `value` has no line feed.
    void add(std::string_view field, std::string_view value);
    const std::string &bytes() const { return m_bytes; }

private:
    std::string m_bytes;
};

/// The system's journal. Never waits for it: libsystemd's own functions do once the journal has
/// stopped reading.
class Journal
{
public:
    explicit Journal(std::string socketPath = "/run/systemd/journal/socket");

    /// False when the record is lost: no journal, or one that does not keep up.
    bool send(const JournalRecord &record) const;

private:
    std::string m_socketPath;
    posix::Descriptor m_socket;
};

} // namespace velq::daemon
