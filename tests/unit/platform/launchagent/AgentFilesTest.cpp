#include "platform/linux/launchagent/AgentFiles.h"

#include "platform/linux/launchagent/Error.h"
#include "unit/platform/launchagent/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace
{

using namespace velq::launchagent;
using velq::testing::TemporaryFolder;
namespace fs = std::filesystem;

const std::string unitText = "[Unit]\n[X-LaunchAgent]\n";
const std::string entryText = "[Desktop Entry]\nX-LaunchAgent=/a\n";

class AgentFilesTest : public testing::Test
{
protected:
    fs::path unit() const { return domain.units / "org.a.service"; }
    fs::path link() const { return domain.units / "some.target.wants/org.a.service"; }
    fs::path entry() const { return domain.autostart / "org.a.agent.desktop"; }

    void makeLink(const fs::path &target) const
    {
        fs::create_directories(link().parent_path());
        fs::create_symlink(target, link());
    }

    TemporaryFolder folder;
    Domain domain{
        false, folder.path() / "systemd/user", folder.path() / "autostart", {}, "some.target"};
    AgentFiles files{domain, "org.a"};
};

TEST_F(AgentFilesTest, FoldersAreMadeAndEqualTextIsNoChange)
{
    EXPECT_TRUE(files.writeUnit(unitText));
    EXPECT_EQ(TemporaryFolder::textOf(unit()), unitText);
    EXPECT_FALSE(files.writeUnit(unitText));
    EXPECT_TRUE(files.writeUnit(unitText + "Version=2\n"));
    EXPECT_TRUE(files.writeAutostart(entryText));
    EXPECT_EQ(fs::status(entry()).permissions(), fs::perms(0644));
    EXPECT_EQ(std::distance(fs::directory_iterator(domain.units), {}), 1);
}

TEST_F(AgentFilesTest, EverythingOfOursIsRemoved)
{
    files.writeUnit(unitText);
    files.writeAutostart(entryText);
    makeLink(unit());
    files.remove();
    EXPECT_FALSE(fs::exists(unit()));
    EXPECT_FALSE(fs::is_symlink(link()));
    EXPECT_FALSE(fs::exists(entry()));
    EXPECT_NO_THROW(files.remove());
}

TEST_F(AgentFilesTest, ARelativeLinkIsOursToo)
{
    files.writeUnit(unitText);
    makeLink("../org.a.service");
    files.remove();
    EXPECT_FALSE(fs::is_symlink(link()));
}

TEST_F(AgentFilesTest, OthersFilesStay)
{
    folder.write("systemd/user/org.a.service", "[Service]\n# [X-LaunchAgent]\n");
    folder.write("autostart/org.a.agent.desktop", "[Desktop Entry]\n");
    makeLink(unit());
    EXPECT_THROW(files.writeUnit(unitText), Error);
    EXPECT_FALSE(files.writeAutostart(entryText));
    files.remove();
    EXPECT_TRUE(fs::exists(unit()));
    EXPECT_TRUE(fs::exists(link()));
    EXPECT_EQ(TemporaryFolder::textOf(entry()), "[Desktop Entry]\n");
}

TEST_F(AgentFilesTest, ALinkElsewhereStays)
{
    files.writeUnit(unitText);
    makeLink(folder.write("other.service", unitText));
    files.remove();
    EXPECT_FALSE(fs::exists(unit()));
    EXPECT_TRUE(fs::exists(link()));
}

TEST_F(AgentFilesTest, AMaskedUnitIsNotUnmasked)
{
    fs::create_directories(domain.units);
    fs::create_symlink("/dev/null", unit());
    EXPECT_THROW(files.writeUnit(unitText), Error);
    files.remove();
    EXPECT_TRUE(fs::is_symlink(unit()));
}

TEST_F(AgentFilesTest, WhatCannotBeWrittenIsTold)
{
    folder.write("systemd", "a file where the folder should be");
    EXPECT_THROW(files.writeUnit(unitText), Error);
}

TEST_F(AgentFilesTest, TheSystemHasNoAutostart)
{
    domain = {true, folder.path(), {}, {}, "some.target"};
    EXPECT_FALSE(AgentFiles(domain, "org.a").writeAutostart(entryText));
}

} // namespace
