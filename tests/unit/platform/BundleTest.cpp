#include "platform/Bundle.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <unistd.h>

namespace
{

using velq::Bundle;

class BundleTest : public testing::Test
{
protected:
    void SetUp() override
    {
        root = QDir(folder.path()).canonicalPath() + QStringLiteral("/Some.app");
        ASSERT_TRUE(QDir().mkpath(root + QStringLiteral("/Contents/MacOS")));
        QFile info(root + QStringLiteral("/Contents/Info.plist"));
        ASSERT_TRUE(info.open(QIODevice::WriteOnly));
        info.write("<plist version=\"1.0\"><dict>"
                   "<key>CFBundleIdentifier</key><string>com.zelmor.Some</string>"
                   "<key>CFBundleVersion</key><string>7</string>"
                   "<key>Number</key><integer>7</integer></dict></plist>");
    }

    QTemporaryDir folder;
    QString root;
};

TEST_F(BundleTest, IsFoundFromItsProgram)
{
    const Bundle bundle = Bundle::ofExecutable(root + QStringLiteral("/Contents/MacOS/Some"));
    EXPECT_EQ(bundle.bundlePath(), root);
    EXPECT_EQ(bundle.resourcePath(), root + QStringLiteral("/Contents/Resources"));
    EXPECT_EQ(bundle.helperPath(), root + QStringLiteral("/Contents/Helpers"));
}

TEST_F(BundleTest, KnowsItsInformationDictionary)
{
    const Bundle bundle(root);
    EXPECT_EQ(bundle.bundleIdentifier(), QStringLiteral("com.zelmor.Some"));
    EXPECT_EQ(bundle.textForInfoDictionaryKey(QStringLiteral("CFBundleVersion")),
              QStringLiteral("7"));
    EXPECT_EQ(bundle.infoDictionary().size(), 3);
}

TEST_F(BundleTest, ItsProgramIsTheNamedOneOrItsNamesake)
{
    EXPECT_TRUE(Bundle(root).executablePath().isNull());
    const QString program = root + QStringLiteral("/Contents/MacOS/Some");
    ASSERT_TRUE(QFile::copy(QStringLiteral("/bin/true"), program));
    EXPECT_EQ(Bundle(root).executablePath(), program);
    ASSERT_TRUE(QFile::rename(program, root + QStringLiteral("/Contents/MacOS/Named")));
    EXPECT_TRUE(Bundle(root).executablePath().isNull());
    QFile info(root + QStringLiteral("/Contents/Info.plist"));
    ASSERT_TRUE(info.open(QIODevice::WriteOnly));
    info.write("<plist version=\"1.0\"><dict><key>CFBundleExecutable</key>"
               "<string>Named</string></dict></plist>");
    info.close();
    EXPECT_EQ(Bundle(root).executablePath(), root + QStringLiteral("/Contents/MacOS/Named"));
    EXPECT_TRUE(Bundle(folder.path() + QStringLiteral("/absent")).executablePath().isNull());
}

TEST_F(BundleTest, ResourcesAreFoundByNameAndType)
{
    const QString app = root + QStringLiteral("/Contents/Resources/Other.app");
    ASSERT_TRUE(QDir().mkpath(app));
    const Bundle bundle(root);
    const QString type = QStringLiteral("app");
    EXPECT_EQ(bundle.pathForResource(QStringLiteral("Other"), type), app);
    EXPECT_TRUE(bundle.pathForResource(QStringLiteral("None"), type).isNull());
    EXPECT_TRUE(bundle.pathForResource(QStringLiteral("Other"), QStringLiteral("png")).isNull());
}

TEST_F(BundleTest, AProgramWithoutAnInformationDictionaryHasItsFilesName)
{
    EXPECT_EQ(Bundle::runningApplicationName(), QStringLiteral("test_platform"));
}

TEST_F(BundleTest, WhatIsMissingOrNoTextIsNull)
{
    const Bundle bundle(root);
    EXPECT_TRUE(bundle.textForInfoDictionaryKey(QStringLiteral("CFBundleName")).isNull());
    EXPECT_TRUE(bundle.textForInfoDictionaryKey(QStringLiteral("Number")).isNull());
    EXPECT_TRUE(Bundle(folder.path()).bundleIdentifier().isNull());
}

TEST_F(BundleTest, AProgramOutsideABundleIsItsOwnFoldersBundle)
{
    const Bundle bundle = Bundle::ofExecutable(folder.filePath(QStringLiteral("tool")));
    EXPECT_EQ(bundle.bundlePath(), folder.path());
    EXPECT_EQ(bundle.resourcePath(), folder.path());
    EXPECT_EQ(bundle.helperPath(), folder.path());
}

TEST_F(BundleTest, TheMainBundleIsTheRunningPrograms)
{
    const QString program = QFile::symLinkTarget(QStringLiteral("/proc/self/exe"));
    EXPECT_EQ(Bundle::mainBundle().bundlePath(), QFileInfo(program).path());
}

} // namespace
