#include "daemon/Audit.h"

#include "daemon/PlainText.h"

namespace velq::daemon
{

namespace
{

// journalctl MESSAGE_ID=... shows the calls and nothing else.
constexpr char messageId[] = "6b0f5e1f2d8a4c0c9a37d1e4b8c25f93";
constexpr size_t mostEscaped = 1024;

constexpr double failureBurst = 50;
constexpr double failuresPerSecond = 1;

// Each in quotes: a blank between two arguments is not one inside an argument.
std::string escapedArguments(const Request &request)
{
    std::string all;
    for (const std::string &argument : request.arguments) {
        if (all.size() + 3 > mostEscaped)
            break;
        all += all.empty() ? "\"" : " \"";
        all += escapedText(argument, mostEscaped - all.size() - 1) + '"';
    }
    return all;
}

std::string verdictOf(const Audit::Entry &entry)
{
    return entry.failure ? nameOf(entry.failure->error) : "Served";
}

std::string userOf(const Audit::Entry &entry)
{
    return entry.user ? std::to_string(*entry.user) : "unknown";
}

// What is a warning when a stranger, or a fault, is behind it.
const char *priorityOf(const Audit::Entry &entry)
{
    return entry.failure ? "4" : "6";
}

std::string messageFor(const Audit::Entry &entry)
{
    std::string message = verdictOf(entry);
    if (entry.failure && !entry.failure->reason.empty())
        message += " (" + escapedText(entry.failure->reason, mostEscaped) + ")";
    message += ": user " + userOf(entry);
    if (entry.request)
        message += ", " + escapedText(entry.request->launchPath, mostEscaped) + ' '
            + escapedArguments(*entry.request);
    return message;
}

JournalRecord recordOf(const Audit::Entry &entry)
{
    JournalRecord record;
    record.add("MESSAGE", messageFor(entry));
    record.add("MESSAGE_ID", messageId);
    record.add("PRIORITY", priorityOf(entry));
    record.add("SYSLOG_IDENTIFIER", "VelqDemon");
    record.add("VELQ_VERDICT", verdictOf(entry));
    record.add("VELQ_UID", userOf(entry));
    record.add("VELQ_SENDER", escapedText(entry.sender, mostEscaped));
    record.add("VELQ_USEC", std::to_string(entry.took.count()));
    record.add("VELQ_BYTES", std::to_string(entry.bytes));
    if (entry.request) {
        record.add("VELQ_PATH", escapedText(entry.request->launchPath, mostEscaped));
        record.add("VELQ_ARGS", escapedArguments(*entry.request));
    }
    if (entry.failure)
        record.add("VELQ_REASON", escapedText(entry.failure->reason, mostEscaped));
    if (!entry.complaint.empty())
        record.add("VELQ_STDERR", escapedText(entry.complaint, mostEscaped));
    return record;
}

} // namespace

void Audit::write(const Entry &entry)
{
    JournalRecord record = recordOf(entry);
    if (m_missing > 0)
        record.add("VELQ_MISSING", std::to_string(m_missing));
    if (isOneTooMany(entry) || !m_journal.send(record))
        ++m_missing;
    else
        m_missing = 0;
}

bool Audit::isOneTooMany(const Entry &entry)
{
    if (!entry.failure)
        return false;
    TokenBucket &bucket =
        m_failures.try_emplace(entry.user, failureBurst, failuresPerSecond).first->second;
    return !bucket.take(TokenBucket::Clock::now());
}

} // namespace velq::daemon
