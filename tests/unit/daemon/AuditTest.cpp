#include "daemon/Audit.h"

#include "unit/daemon/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <cstring>
#include <sys/socket.h>
#include <sys/un.h>

namespace
{

using ::testing::Test;
using velq::daemon::Audit;
using velq::daemon::Error;
using velq::daemon::Journal;
using velq::daemon::Refusal;
using velq::daemon::Request;
using velq::posix::Descriptor;

class AuditTest : public Test
{
protected:
    AuditTest()
    {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::strncpy(address.sun_path, socketPath().c_str(), sizeof address.sun_path - 1);
        EXPECT_EQ(
            bind(m_socket.get(), reinterpret_cast<const sockaddr *>(&address), sizeof address), 0);
    }

    std::string socketPath() const { return m_folder.path() / "socket"; }

    // Empty when there is none.
    std::string nextRecord() const
    {
        std::array<char, 65536> buffer{};
        const ssize_t count = recv(m_socket.get(), buffer.data(), buffer.size(), MSG_DONTWAIT);
        return {buffer.data(), count > 0 ? static_cast<size_t>(count) : 0};
    }

    static bool has(const std::string &record, const std::string &line)
    {
        return ("\n" + record).find("\n" + line + "\n") != std::string::npos;
    }

    static Audit::Entry served()
    {
        Audit::Entry entry;
        entry.sender = ":1.7";
        entry.user = 1000;
        entry.request = Request{"/bin/sh", {"-c", "echo a"}};
        entry.took = std::chrono::microseconds(1234);
        entry.bytes = 2;
        return entry;
    }

    static Audit::Entry refused()
    {
        Audit::Entry entry = served();
        entry.failure = Refusal{Error::NotAuthorized, "no grant"};
        return entry;
    }

    velq::testing::TemporaryFolder m_folder;
    Descriptor m_socket{socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0)};
    Audit m_audit{Journal(socketPath())};
};

TEST_F(AuditTest, ARecordTellsWhoWhatAndHow)
{
    m_audit.write(served());
    const std::string record = nextRecord();
    for (const char *line :
         {"VELQ_UID=1000", "VELQ_SENDER=:1.7", "VELQ_PATH=/bin/sh", R"(VELQ_ARGS="-c" "echo a")",
          "VELQ_VERDICT=Served", "VELQ_USEC=1234", "VELQ_BYTES=2", "PRIORITY=6",
          "SYSLOG_IDENTIFIER=VelqDemon", R"(MESSAGE=Served: user 1000, /bin/sh "-c" "echo a")"})
        EXPECT_TRUE(has(record, line)) << line << "\nin\n" << record;
    EXPECT_NE(record.find("MESSAGE_ID="), std::string::npos);
}

TEST_F(AuditTest, ARefusalTellsItsReason)
{
    Audit::Entry entry = refused();
    entry.user = std::nullopt;
    entry.request = std::nullopt;
    m_audit.write(entry);
    const std::string record = nextRecord();
    EXPECT_TRUE(has(record, "VELQ_VERDICT=NotAuthorized"));
    EXPECT_TRUE(has(record, "VELQ_REASON=no grant"));
    EXPECT_TRUE(has(record, "VELQ_UID=unknown"));
    EXPECT_TRUE(has(record, "PRIORITY=4"));
    EXPECT_EQ(record.find("VELQ_ARGS"), std::string::npos);
}

TEST_F(AuditTest, NobodyWritesLinesOfHisOwn)
{
    // Turns the direction of what follows; in one piece it would do so here, too.
    const std::string turning = std::string("\xe2\x80") + "\xae";
    Audit::Entry entry = served();
    entry.request = Request{"/bin/sh\nVELQ_UID=0", {"\nVELQ_UID=0\n", "\x1b[2J", turning}};
    entry.complaint = "x\nVELQ_UID=0\n";
    m_audit.write(entry);
    const std::string record = nextRecord();
    EXPECT_FALSE(has(record, "VELQ_UID=0"));
    EXPECT_TRUE(has(record, R"(VELQ_PATH=/bin/sh\nVELQ_UID=0)"));
    EXPECT_TRUE(has(record, R"(VELQ_ARGS="\nVELQ_UID=0\n" "\x1b[2J" "\xe2\x80\xae")"));
    EXPECT_TRUE(has(record, R"(VELQ_STDERR=x\nVELQ_UID=0\n)"));
}

TEST_F(AuditTest, ArgumentsAreCut)
{
    Audit::Entry entry = served();
    entry.request = Request{"/bin/sh", std::vector<std::string>(200, std::string(1000, '\n'))};
    m_audit.write(entry);
    const std::string record = nextRecord();
    const size_t start = record.find("VELQ_ARGS=") + std::strlen("VELQ_ARGS=");
    const size_t length = record.find('\n', start) - start;
    EXPECT_GT(length, 1000u);
    EXPECT_LE(length, 1024u);
}

TEST_F(AuditTest, RefusalsAreCutShortAndCounted)
{
    const auto begin = std::chrono::steady_clock::now();
    int told = 0;
    for (int i = 0; i < 500; ++i) {
        m_audit.write(refused());
        told += nextRecord().empty() ? 0 : 1;
        EXPECT_TRUE(told == i + 1 || i >= 50) << i;
    }
    // One more for each second that has passed.
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - begin;
    EXPECT_LE(told, 50 + static_cast<int>(took.count()));
    do
        m_audit.write(refused());
    while (!nextRecord().empty());
    m_audit.write(served());
    EXPECT_NE(nextRecord().find("VELQ_MISSING="), std::string::npos);
    m_audit.write(served());
    EXPECT_EQ(nextRecord().find("VELQ_MISSING="), std::string::npos);
}

// The test hangs where a record waits for the journal.
TEST_F(AuditTest, AJournalThatReadsNothingHoldsNobodyUp)
{
    for (int i = 0; i < 2000; ++i)
        m_audit.write(served());
    while (!nextRecord().empty()) { }
    m_audit.write(served());
    EXPECT_NE(nextRecord().find("VELQ_MISSING="), std::string::npos);
}

TEST_F(AuditTest, AJournalThatComesBackIsFound)
{
    Audit audit{Journal(m_folder.path() / "later")};
    audit.write(served());
    std::filesystem::rename(socketPath(), m_folder.path() / "later");
    audit.write(served());
    EXPECT_TRUE(has(nextRecord(), "VELQ_MISSING=1"));
}

} // namespace
