#include "daemon/Grants.h"

#include "unit/daemon/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

namespace
{

namespace fs = std::filesystem;
using velq::daemon::Grants;

class GrantsTest : public ::testing::Test
{
protected:
    std::string objection() const
    {
        return Grants(m_folder.path(), geteuid()).objectionTo(geteuid());
    }
    void putGrant(const std::string &content) const
    {
        m_folder.write("etc/velq/authorized.d/" + std::to_string(geteuid()), content);
    }
    fs::path folder(const std::string &name) const { return m_folder.path() / name; }

    velq::testing::GrantsFolder m_folder;
};

TEST_F(GrantsTest, AGoodGrantIsOne)
{
    EXPECT_EQ(objection(), "");
}

TEST_F(GrantsTest, WithoutAFileThereIsNoGrant)
{
    fs::remove(m_folder.grant());
    EXPECT_EQ(objection(), "no grant");
}

TEST_F(GrantsTest, AGrantIsForItsUserOnly)
{
    EXPECT_EQ(Grants(m_folder.path(), geteuid()).objectionTo(4242), "no grant");
}

TEST_F(GrantsTest, EveryOtherContentIsRefused)
{
    const std::string good = velq::testing::GrantsFolder::goodGrant();
    const std::string number = std::to_string(geteuid());
    for (const std::string &content :
         {std::string(), std::string("\n"), number, number + "\n", number + " \n",
          number + " somebodyelse\n", "4242 " + good.substr(number.size() + 1), " " + good,
          good + good, good + " ", good.substr(0, good.size() - 1), std::string("yes please\n"),
          std::string(100000, 'x'), std::string("0\0root\n", 7)}) {
        putGrant(content);
        EXPECT_EQ(objection(), "the grant is another's") << content.substr(0, 40);
    }
}

TEST_F(GrantsTest, AUserWithoutANameHasNone)
{
    m_folder.write("etc/velq/authorized.d/3999999999", "3999999999 \n");
    EXPECT_EQ(Grants(m_folder.path(), geteuid()).objectionTo(3999999999), "no such user");
}

TEST_F(GrantsTest, AFileThatOthersCanWriteIsNone)
{
    for (const mode_t mode : {0664u, 0646u, 0666u, 0777u}) {
        ASSERT_EQ(chmod(m_folder.grant().c_str(), mode), 0);
        EXPECT_EQ(objection(), "the grant is not safe") << mode;
    }
    ASSERT_EQ(chmod(m_folder.grant().c_str(), 0600), 0);
    EXPECT_EQ(objection(), "");
}

TEST_F(GrantsTest, AFileOfAnotherOwnerIsNone)
{
    EXPECT_NE(Grants(m_folder.path(), geteuid() + 1).objectionTo(geteuid()), "");
    if (geteuid() != 0)
        GTEST_SKIP() << "only root gives files away";
    ASSERT_EQ(chown(m_folder.grant().c_str(), 1000, 1000), 0);
    EXPECT_EQ(objection(), "the grant is not safe");
}

TEST_F(GrantsTest, ALinkIsNone)
{
    m_folder.write("elsewhere", velq::testing::GrantsFolder::goodGrant());
    fs::remove(m_folder.grant());
    fs::create_symlink(m_folder.path() / "elsewhere", m_folder.grant());
    EXPECT_EQ(objection(), "the grant cannot be opened");
}

TEST_F(GrantsTest, WhatIsNoFileIsNoneAndHoldsNobodyUp)
{
    fs::remove(m_folder.grant());
    fs::create_directory(m_folder.grant());
    EXPECT_EQ(objection(), "the grant is not safe");
    fs::remove(m_folder.grant());
    ASSERT_EQ(mkfifo(m_folder.grant().c_str(), 0644), 0);
    EXPECT_EQ(objection(), "the grant is not safe");
}

TEST_F(GrantsTest, EachFolderOnTheWayMustBeSafe)
{
    const std::string bad = "the folder of grants is missing or not safe";
    for (const char *name : {".", "etc", "etc/velq", "etc/velq/authorized.d"}) {
        for (const mode_t mode : {0775u, 0757u, 01777u}) {
            ASSERT_EQ(chmod(folder(name).c_str(), mode), 0);
            EXPECT_EQ(objection(), bad) << name << ' ' << mode;
        }
        ASSERT_EQ(chmod(folder(name).c_str(), 0755), 0);
        EXPECT_EQ(objection(), "") << name;
    }
}

TEST_F(GrantsTest, NoFolderOnTheWayIsALink)
{
    for (const char *name : {"etc/velq/authorized.d", "etc/velq", "etc"}) {
        fs::rename(folder(name), folder("moved"));
        EXPECT_NE(objection(), "") << name;
        fs::create_symlink(folder("moved"), folder(name));
        EXPECT_NE(objection(), "") << name;
        fs::remove(folder(name));
        fs::rename(folder("moved"), folder(name));
        EXPECT_EQ(objection(), "") << name;
    }
}

} // namespace
