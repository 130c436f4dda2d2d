#include "platform/ToolPath.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace
{

using velq::ToolPath;

QString with(const char *path)
{
    return ToolPath::withHelpers(QString::fromLatin1(path), QStringLiteral("/app/Helpers"));
}

TEST(ToolPathTest, HelpersComeJustBeforeTheSystemsFolders)
{
    EXPECT_EQ(with("/home/me/bin:/usr/local/bin:/usr/bin:/bin"),
              QStringLiteral("/home/me/bin:/app/Helpers:/usr/local/bin:/usr/bin:/bin"));
    EXPECT_EQ(with("/opt/a:/sbin"), QStringLiteral("/opt/a:/app/Helpers:/sbin"));
}

TEST(ToolPathTest, AFolderInFrontKeepsItsPrecedence)
{
    EXPECT_TRUE(with("/fake:/usr/bin").startsWith(QStringLiteral("/fake:/app/Helpers:")));
}

TEST(ToolPathTest, WithoutSystemFoldersTheyComeLast)
{
    EXPECT_EQ(with("/fake"), QStringLiteral("/fake:/app/Helpers"));
    EXPECT_EQ(with(""), QStringLiteral("/app/Helpers"));
}

TEST(ToolPathTest, TwiceIsOnce)
{
    EXPECT_EQ(with("/app/Helpers:/usr/bin"), QStringLiteral("/app/Helpers:/usr/bin"));
}

class ToolPathMappingTest : public testing::Test
{
protected:
    void SetUp() override
    {
        m_path = qgetenv("PATH");
        for (const char *name : {"netstat", "airport"}) {
            QFile tool(m_folder.filePath(QString::fromLatin1(name)));
            ASSERT_TRUE(tool.open(QIODevice::WriteOnly));
            tool.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
        }
    }
    void TearDown() override { qputenv("PATH", m_path); }

    QTemporaryDir m_folder;
    QByteArray m_path;
};

TEST_F(ToolPathMappingTest, ToolsThatSpeakOtherwiseAreTakenFromThePath)
{
    qputenv("PATH", m_folder.path().toLocal8Bit());
    EXPECT_EQ(ToolPath::resolved(QStringLiteral("/usr/sbin/netstat")),
              m_folder.filePath(QStringLiteral("netstat")));
    EXPECT_EQ(
        ToolPath::resolved(QStringLiteral("/System/Library/PrivateFrameworks/Apple80211.framework/"
                                          "Versions/Current/Resources/airport")),
        m_folder.filePath(QStringLiteral("airport")));
}

TEST_F(ToolPathMappingTest, AToolThatIsNotThereKeepsItsPath)
{
    qputenv("PATH", m_folder.path().toLocal8Bit());
    EXPECT_EQ(ToolPath::resolved(QStringLiteral("/usr/sbin/arp")), QStringLiteral("/usr/sbin/arp"));
}

TEST_F(ToolPathMappingTest, OtherPathsAreLeftAlone)
{
    EXPECT_EQ(ToolPath::resolved(QStringLiteral("/bin/sh")), QStringLiteral("/bin/sh"));
    EXPECT_EQ(ToolPath::resolved(QStringLiteral("netstat")), QStringLiteral("netstat"));
}

} // namespace
