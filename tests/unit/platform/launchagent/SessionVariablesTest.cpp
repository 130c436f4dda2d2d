#include "platform/linux/launchagent/SessionVariables.h"

#include "unit/platform/launchagent/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <unistd.h>

namespace
{

using namespace velq::launchagent;
using namespace std::chrono_literals;
using std::chrono::system_clock;
using testing::Contains;
using testing::ElementsAre;
using velq::testing::TemporaryFolder;

class SessionVariablesTest : public testing::Test
{
protected:
    void SetUp() override
    {
        for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "XAUTHORITY", "XDG_CURRENT_DESKTOP",
                                 "XDG_SESSION_TYPE", "DBUS_SESSION_BUS_ADDRESS"})
            unsetenv(name);
        set("XDG_RUNTIME_DIR", folder.path());
    }

    static void set(const char *name, const std::string &value) { setenv(name, value.c_str(), 1); }

    TemporaryFolder folder;
};

TEST_F(SessionVariablesTest, WithoutADisplayThereAreNone)
{
    set("XDG_CURRENT_DESKTOP", "XFCE");
    EXPECT_TRUE(SessionVariables::ofCaller().empty());
    set("DISPLAY", "localhost:10.0");
    EXPECT_TRUE(SessionVariables::ofCaller().empty());
}

TEST_F(SessionVariablesTest, WhatIsNotSetIsNamed)
{
    set("DISPLAY", ":99");
    set("XAUTHORITY", "/a b");
    set("XDG_SESSION_TYPE", "x11\nEVIL=1");
    const auto session = SessionVariables::ofCaller();
    EXPECT_THAT(session.assignments(), ElementsAre("DISPLAY=:99", "XAUTHORITY=/a b"));
    EXPECT_THAT(session.absent(),
                ElementsAre("WAYLAND_DISPLAY", "XDG_CURRENT_DESKTOP", "XDG_SESSION_TYPE"));
}

TEST_F(SessionVariablesTest, OnlyABusThatIsNotTheManagersIsHandedOn)
{
    set("DISPLAY", ":99");
    const std::string own = "unix:path=" + folder.path().string() + "/bus";
    for (const std::string &address : {own, own + ",guid=12"}) {
        set("DBUS_SESSION_BUS_ADDRESS", address);
        EXPECT_THAT(SessionVariables::ofCaller().assignments(), ElementsAre("DISPLAY=:99"));
    }
    set("DBUS_SESSION_BUS_ADDRESS", own + "2");
    EXPECT_THAT(SessionVariables::ofCaller().assignments(),
                Contains("DBUS_SESSION_BUS_ADDRESS=" + own + "2"));
}

TEST_F(SessionVariablesTest, AProcessHasTheSameDisplayOrAnother)
{
    set("WAYLAND_DISPLAY", "wayland-7");
    const auto session = SessionVariables::ofCaller();
    const auto now = system_clock::now();
    EXPECT_TRUE(session.areThoseOf({{"WAYLAND_DISPLAY", "wayland-7"}, {"OTHER", "x"}}, now));
    EXPECT_FALSE(session.areThoseOf({{"WAYLAND_DISPLAY", "wayland-8"}}, now));
    EXPECT_FALSE(session.areThoseOf({}, now));
    EXPECT_FALSE(session.areThoseOf({{"WAYLAND_DISPLAY", "wayland-7"}, {"DISPLAY", ":0"}}, now));
}

TEST_F(SessionVariablesTest, ADisplayThatCameUpLaterIsAnother)
{
    set("WAYLAND_DISPLAY", "wayland-7");
    folder.write("wayland-7", "");
    const auto session = SessionVariables::ofCaller();
    const std::map<std::string, std::string> environment{{"WAYLAND_DISPLAY", "wayland-7"}};
    EXPECT_TRUE(session.areThoseOf(environment, system_clock::now() + 1min));
    EXPECT_FALSE(session.areThoseOf(environment, system_clock::now() - 1min));
}

TEST_F(SessionVariablesTest, AProcesssEnvironmentIsTheOneItStartedWith)
{
    set("SET_LATER", "1");
    const auto environment = environmentOf(getpid());
    EXPECT_TRUE(environment.contains("PATH"));
    EXPECT_FALSE(environment.contains("SET_LATER"));
    EXPECT_TRUE(environmentOf(-1).empty());
}

} // namespace
