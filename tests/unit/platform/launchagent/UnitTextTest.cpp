#include "platform/linux/launchagent/UnitText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{

using namespace velq::launchagent;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

Agent agent(const std::string &program = "/opt/agent")
{
    return {"/home/a/b.plist", "org.example", program, 7, true};
}

Domain persons()
{
    return {false, "/c/systemd/user", "/c/autostart", "/r/private", "graphical-session.target"};
}

Domain systems()
{
    return {true, "/etc/systemd/system", {}, "/run/systemd/private", "multi-user.target"};
}

TEST(UnitText, SaysAllOfAnAgent)
{
    EXPECT_EQ(unitText(agent(), persons(), {}),
              "# Written by launchctl, anew whenever the agent is loaded.\n"
              "[Unit]\n"
              "Description=Launch agent org.example\n"
              "ConditionPathExists=/home/a/b.plist\n"
              "ConditionFileIsExecutable=/opt/agent\n"
              "StartLimitIntervalSec=0\n"
              "PartOf=graphical-session.target\n"
              "After=graphical-session.target\n"
              "\n"
              "[Service]\n"
              "Type=exec\n"
              "ExecStart=:\"/opt/agent\"\n"
              "Restart=always\n"
              "RestartSec=1s\n"
              "TimeoutStopSec=10s\n"
              "\n"
              "[Install]\n"
              "WantedBy=graphical-session.target\n"
              "\n"
              "[X-LaunchAgent]\n"
              "Path=/home/a/b.plist\n"
              "Version=7\n");
}

TEST(UnitText, ASystemsAgentBelongsToNoSession)
{
    const std::string text = unitText(agent(), systems(), {"DISPLAY=:0"});
    EXPECT_THAT(text, HasSubstr("\nWantedBy=multi-user.target\n"));
    EXPECT_THAT(text, HasSubstr("\nEnvironment=\"DISPLAY=:0\"\n"));
    EXPECT_THAT(text, Not(HasSubstr("PartOf")));
}

TEST(UnitText, WithoutAVersionThereIsNone)
{
    Agent other = agent();
    other.version.reset();
    other.keepAlive = false;
    const std::string text = unitText(other, persons(), {});
    EXPECT_THAT(text, EndsWith("\nPath=/home/a/b.plist\n"));
    EXPECT_THAT(text, HasSubstr("\nRestart=no\n"));
}

TEST(UnitText, SpecifiersAndVariablesArePlainCharacters)
{
    const std::string text = unitText(agent("/a %h/$HOME"), persons(), {"A=%h \"\\"});
    EXPECT_THAT(text, HasSubstr("\nExecStart=:\"/a %%h/$HOME\"\n"));
    EXPECT_THAT(text, HasSubstr("\nConditionFileIsExecutable=/a %%h/$HOME\n"));
    EXPECT_THAT(text, HasSubstr("\nEnvironment=\"A=%%h \\\"\\\\\"\n"));
}

TEST(UnitText, ANameThatSystemdDoesNotTakeGoesThroughTheShell)
{
    EXPECT_THAT(unitText(agent("/o'b\"c\\d"), persons(), {}),
                HasSubstr("\nExecStart=:/bin/sh -c \"exec \\\"$0\\\"\" \"/o'b\\\"c\\\\d\"\n"));
}

TEST(AutostartText, LoadsTheAgent)
{
    EXPECT_EQ(autostartText(agent(), "/opt/launchctl"),
              "[Desktop Entry]\n"
              "Type=Application\n"
              "Name=org.example\n"
              "NoDisplay=true\n"
              "TryExec=/opt/launchctl\n"
              "Exec=\"/opt/launchctl\" load \"/home/a/b.plist\"\n"
              "X-LaunchAgent=/home/a/b.plist\n");
}

TEST(AutostartText, IsQuotedTwice)
{
    Agent other = agent();
    other.propertyList = "/a $b`\"%\\";
    EXPECT_THAT(autostartText(other, "/t\\l"),
                HasSubstr("\nTryExec=/t\\\\l\n"
                          "Exec=\"/t\\\\\\\\l\" load \"/a \\\\$b\\\\`\\\\\"%%\\\\\\\\\"\n"));
}

} // namespace
