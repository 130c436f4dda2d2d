#include "platform/BundleFiles.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace
{

using velq::BundleFiles;

class BundleFilesTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(QDir().mkpath(from + QStringLiteral("/Contents/MacOS")));
        write(program());
    }

    static void write(const QString &path)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("program");
    }

    QString program() const { return from + QStringLiteral("/Contents/MacOS/Some"); }
    QString copied(const char *name) const { return to + QLatin1String(name); }
    QStringList names() const
    {
        return QDir(folder.path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    }

    const QTemporaryDir folder;
    const QString from = folder.filePath(QStringLiteral("From.app"));
    const QString to = folder.filePath(QStringLiteral("To.app"));
};

TEST_F(BundleFilesTest, ACopyIsThereAsAWhole)
{
    EXPECT_TRUE(BundleFiles::copy(from, to));
    EXPECT_TRUE(QFile::exists(copied("/Contents/MacOS/Some")));
    EXPECT_EQ(names(), QStringList({QStringLiteral("From.app"), QStringLiteral("To.app")}));
}

TEST_F(BundleFilesTest, NothingIsCopiedOntoWhatIsThere)
{
    ASSERT_TRUE(QDir().mkpath(to));
    EXPECT_FALSE(BundleFiles::copy(from, to));
    EXPECT_TRUE(QDir(to).isEmpty());
    ASSERT_TRUE(QDir().rmdir(to));
    ASSERT_TRUE(QFile::link(QStringLiteral("nowhere"), to));
    EXPECT_FALSE(BundleFiles::copy(from, to));
    EXPECT_EQ(QFile(to).symLinkTarget(), folder.filePath(QStringLiteral("nowhere")));
}

TEST_F(BundleFilesTest, WhatIsNotThereIsNotCopied)
{
    EXPECT_FALSE(BundleFiles::copy(folder.filePath(QStringLiteral("None.app")), to));
    EXPECT_FALSE(BundleFiles::copy(QString(), to));
    EXPECT_FALSE(BundleFiles::copy(from, QString()));
    EXPECT_FALSE(BundleFiles::copy(from, folder.filePath(QStringLiteral("none/To.app"))));
    EXPECT_EQ(names(), QStringList({QStringLiteral("From.app")}));
}

TEST_F(BundleFilesTest, LinksThatLeadIntoTheBundleByItsPathBecomeFiles)
{
    ASSERT_TRUE(QFile::link(program(), from + QStringLiteral("/absolute")));
    ASSERT_TRUE(QFile::link(QStringLiteral("Contents/MacOS/Some"), from + QStringLiteral("/own")));
    EXPECT_TRUE(BundleFiles::copy(from, to));
    EXPECT_FALSE(QFileInfo(copied("/absolute")).isSymLink());
    EXPECT_TRUE(QFileInfo(copied("/absolute")).isFile());
    EXPECT_TRUE(QFileInfo(copied("/own")).isSymLink());
    EXPECT_EQ(QFileInfo(copied("/own")).canonicalFilePath(),
              QFileInfo(copied("/Contents/MacOS/Some")).canonicalFilePath());
}

TEST_F(BundleFilesTest, LinksToFoldersAreNotGoneThrough)
{
    ASSERT_TRUE(QFile::link(QStringLiteral("/"), from + QStringLiteral("/everything")));
    EXPECT_TRUE(BundleFiles::copy(from, to));
    EXPECT_TRUE(QFileInfo(copied("/everything")).isSymLink());
}

TEST_F(BundleFilesTest, AFolderThatMayNotBeWrittenIsCopiedAndCanBeRemoved)
{
    const QString macOS = from + QStringLiteral("/Contents/MacOS");
    ASSERT_TRUE(QFile::setPermissions(macOS, QFile::ReadOwner | QFile::ExeOwner));
    EXPECT_TRUE(BundleFiles::copy(from, to));
    EXPECT_TRUE(QFile::permissions(copied("/Contents/MacOS")) & QFile::WriteOwner);
    EXPECT_TRUE(BundleFiles::remove(to));
    EXPECT_EQ(names(), QStringList({QStringLiteral("From.app")}));
    QFile::setPermissions(macOS, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

TEST_F(BundleFilesTest, WhatIsNotThereIsNotRemoved)
{
    EXPECT_FALSE(BundleFiles::remove(to));
    EXPECT_FALSE(BundleFiles::remove(QString()));
    EXPECT_EQ(names(), QStringList({QStringLiteral("From.app")}));
}

} // namespace
