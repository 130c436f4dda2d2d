#include "platform/linux/launchagent/Agent.h"

#include "platform/linux/launchagent/Error.h"
#include "unit/platform/launchagent/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace
{

using namespace velq::launchagent;
using velq::testing::TemporaryFolder;

class AgentTest : public testing::Test
{
protected:
    Agent read(const std::string &items) const
    {
        return readAgent(
            folder.write("a.plist", R"(<plist version="1.0"><dict>)" + items + "</dict></plist>"));
    }

    // An agent that could be started, for a test to spoil.
    Agent startable() const
    {
        return {folder.path() / "a.plist", "org.example", "/bin/sh", 1, true};
    }

    TemporaryFolder folder;
};

TEST(Label, IsSafeAsAName)
{
    for (const char *label : {"com.zelmor.Monitor", "a", "7", "A-b_c.d", "a..b"})
        EXPECT_TRUE(isLabel(label)) << label;
    EXPECT_TRUE(isLabel(std::string(200, 'x')));
}

TEST(Label, IsNothingElse)
{
    for (const char *label : {"", ".hidden", "-w", "_a", "a/b", "../a", "a b", "a@b", "a:b", "a\n",
                              "a%i", "a$b", "\xc3\xa9", "a\\x2d"})
        EXPECT_FALSE(isLabel(label)) << label;
    EXPECT_FALSE(isLabel(std::string(201, 'x')));
    EXPECT_FALSE(isLabel(std::string_view("a\0b", 3)));
}

TEST_F(AgentTest, IsReadFromItsFourKeys)
{
    const Agent agent = read("<key>KeepAlive</key><true/><key>Label</key><string>org.a</string>"
                             "<key>Version</key><integer>12</integer>"
                             "<key>Program</key><string>/opt/a b</string>");
    EXPECT_EQ(agent.label, "org.a");
    EXPECT_EQ(agent.unit(), "org.a.service");
    EXPECT_EQ(agent.program, "/opt/a b");
    EXPECT_EQ(agent.version, 12);
    EXPECT_TRUE(agent.keepAlive);
    EXPECT_EQ(agent.propertyList, folder.path() / "a.plist");
}

TEST_F(AgentTest, ALabelIsEnoughToBeRead)
{
    const Agent agent = read("<key>Label</key><string>org.a</string>");
    EXPECT_TRUE(agent.program.empty());
    EXPECT_FALSE(agent.version);
    EXPECT_FALSE(agent.keepAlive);
}

TEST_F(AgentTest, ValuesOfAnotherKindAreNone)
{
    const Agent agent = read("<key>KeepAlive</key><string>yes</string><key>Label</key>"
                             "<string>org.a</string><key>Version</key><string>12</string>"
                             "<key>Program</key><integer>1</integer>");
    EXPECT_TRUE(agent.program.empty());
    EXPECT_FALSE(agent.version);
    EXPECT_FALSE(agent.keepAlive);
}

TEST_F(AgentTest, WhatIsNoAgentIsRefused)
{
    EXPECT_THROW(read(""), Error);
    EXPECT_THROW(read("<key>Label</key><integer>1</integer>"), Error);
    EXPECT_THROW(read("<key>Label</key><string>../a</string>"), Error);
    EXPECT_THROW(readAgent(folder.write("b.plist", "")), Error);
    EXPECT_THROW(readAgent(folder.write("b.plist", "<plist><array/></plist>")), Error);
    EXPECT_THROW(readAgent(folder.path() / "absent"), Error);
    EXPECT_THROW(readAgent(folder.path()), Error);
    const std::string large = "<!--" + std::string((4 << 20) + 1, 'x') + "-->";
    EXPECT_THROW(read("<key>Label</key><string>org.a</string>" + large), Error);
}

TEST_F(AgentTest, APipeInTheFilesPlaceIsNotWaitedFor)
{
    const std::string pipe = folder.path() / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_THROW(readAgent(pipe), Error);
}

TEST_F(AgentTest, AProgramThatCanBeStartedIsRequired)
{
    EXPECT_NO_THROW(requireProgram(startable()));
    Agent agent = startable();
    for (const char *program : {"", "sh", "/nonexistent", "/", "/etc/passwd", "/bin/sh\n",
                                "/bin/sh ", "/bin/sh\\", "/bin/\x7fsh"}) {
        agent.program = program;
        EXPECT_THROW(requireProgram(agent), Error) << program;
    }
    agent = startable();
    agent.propertyList = "/tmp/a\nExecStart=/bin/false";
    EXPECT_THROW(requireProgram(agent), Error);
}

} // namespace
