#include "platform/UserDefaults.h"

#include "platform/PropertyList.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTimeZone>
#include <gtest/gtest.h>

#include <thread>

namespace
{

using velq::PropertyList;
using velq::UserDefaults;

class UserDefaultsTest : public testing::Test
{
protected:
    UserDefaultsTest() { qputenv("HOME", home.path().toLocal8Bit()); }
    ~UserDefaultsTest() override { qputenv("HOME", before); }

    QVariantMap stored() const
    {
        return PropertyList::dictionaryFromFile(file).value_or(QVariantMap());
    }

    const QTemporaryDir home;
    const QByteArray before = qgetenv("HOME");
    const QString file = home.filePath(QStringLiteral("Library/Preferences/com.zelmor.Some.plist"));
    const QString domain = QStringLiteral("com.zelmor.Some");
    const QString key = QStringLiteral("key");
};

TEST_F(UserDefaultsTest, WhatIsNotThereIsNegative)
{
    const UserDefaults defaults(domain);
    EXPECT_FALSE(defaults.objectForKey(key).isValid());
    EXPECT_TRUE(defaults.stringForKey(key).isNull());
    EXPECT_FALSE(defaults.boolForKey(key));
    EXPECT_EQ(defaults.integerForKey(key), 0);
    EXPECT_EQ(defaults.doubleForKey(key), 0);
    EXPECT_FALSE(defaults.dateForKey(key).isValid());
    EXPECT_FALSE(QFile::exists(file));
}

TEST_F(UserDefaultsTest, ValuesAreInTheFileAtOnce)
{
    UserDefaults defaults(domain);
    const QDateTime date(QDate(2024, 2, 29), QTime(12, 0), QTimeZone::utc());
    const QVariantMap all{
        {QStringLiteral("text"), QStringLiteral("网络")},
        {QStringLiteral("yes"), true},
        {QStringLiteral("number"), qlonglong(-5)},
        {QStringLiteral("real"), 0.1},
        {QStringLiteral("data"), QByteArray("\0\1", 2)},
        {QStringLiteral("date"), date},
        {QStringLiteral("list"), QVariantList{1LL, QVariantMap{{key, QString(QLatin1String(""))}}}},
    };
    for (auto each = all.begin(); each != all.end(); ++each)
        defaults.setObject(each.value(), each.key());
    EXPECT_EQ(stored(), all);
    EXPECT_TRUE(defaults.synchronize());
    EXPECT_EQ(UserDefaults(domain).dateForKey(QStringLiteral("date")), date);
}

TEST_F(UserDefaultsTest, AToggleReturnsToWhatWasStored)
{
    UserDefaults defaults(domain);
    for (const bool expected : {true, false, true}) {
        defaults.setBool(!defaults.boolForKey(key), key);
        EXPECT_EQ(defaults.boolForKey(key), expected);
        EXPECT_EQ(UserDefaults(domain).boolForKey(key), expected);
    }
}

TEST_F(UserDefaultsTest, NullRemoves)
{
    UserDefaults defaults(domain);
    defaults.setBool(true, key);
    defaults.removeObjectForKey(key);
    EXPECT_FALSE(defaults.objectForKey(key).isValid());
    defaults.setBool(true, key);
    defaults.setObject(QString(), key);
    EXPECT_TRUE(stored().isEmpty());
}

TEST_F(UserDefaultsTest, AValueThatNoListHoldsChangesNothing)
{
    UserDefaults defaults(domain);
    defaults.setObject(QStringLiteral("kept"), key);
    defaults.setObject(QVariant::fromValue(QChar(0)), key);
    defaults.setObject(QStringLiteral("\x1b"), key);
    defaults.setObject(QString(QChar(0)), key);
    defaults.setBool(true, QStringLiteral("a\x01"));
    EXPECT_EQ(defaults.stringForKey(key), QStringLiteral("kept"));
    EXPECT_TRUE(defaults.synchronize());
    EXPECT_EQ(stored().size(), 1);
}

TEST_F(UserDefaultsTest, ChangesOfOthersAreSeenAndKept)
{
    UserDefaults mine(domain);
    UserDefaults others(domain);
    EXPECT_FALSE(mine.boolForKey(key));
    others.setBool(true, key);
    EXPECT_TRUE(mine.boolForKey(key));
    mine.setBool(true, QStringLiteral("mine"));
    others.setBool(false, key);
    EXPECT_FALSE(mine.boolForKey(key));
    EXPECT_EQ(stored().size(), 2);
    QFile::remove(file);
    EXPECT_FALSE(mine.objectForKey(QStringLiteral("mine")).isValid());
}

TEST_F(UserDefaultsTest, WhatCannotBeWrittenHoldsAndIsTriedAgain)
{
    // A file in the folder's place; to root, rights would be no hindrance.
    QFile obstacle(home.filePath(QStringLiteral("Library")));
    ASSERT_TRUE(obstacle.open(QIODevice::WriteOnly));
    UserDefaults defaults(domain);
    defaults.setBool(true, key);
    defaults.setBool(true, QStringLiteral("another"));
    EXPECT_TRUE(defaults.boolForKey(key));
    EXPECT_FALSE(defaults.synchronize());
    obstacle.remove();
    EXPECT_TRUE(defaults.synchronize());
    EXPECT_TRUE(stored().value(key).toBool());
}

TEST_F(UserDefaultsTest, ADamagedFileReadsAsNoneAndIsKept)
{
    ASSERT_TRUE(QDir().mkpath(QFileInfo(file).path()));
    QFile damaged(file);
    ASSERT_TRUE(damaged.open(QIODevice::WriteOnly));
    damaged.write("<plist><dict><key>key</key>");
    damaged.close();
    UserDefaults defaults(domain);
    EXPECT_FALSE(defaults.objectForKey(key).isValid());
    defaults.setBool(true, key);
    EXPECT_TRUE(stored().value(key).toBool());
    const QStringList names = QFileInfo(file).dir().entryList(QDir::Files);
    ASSERT_EQ(names.size(), 2);
    EXPECT_TRUE(names.last().startsWith(QStringLiteral("com.zelmor.Some.plist.corrupt-")));
}

TEST_F(UserDefaultsTest, OtherKindsAreTakenForWhatTheySay)
{
    UserDefaults defaults(domain);
    const auto set = [&](const QVariant &value) {
        defaults.setObject(value, key);
    };
    for (const char *const text : {"YES", "true", "1", " 09", "-1", "Tuesday"}) {
        set(QLatin1String(text));
        EXPECT_TRUE(defaults.boolForKey(key)) << text;
    }
    for (const char *const text : {"", "NO", "0", "off", " 0.5"}) {
        set(QLatin1String(text));
        EXPECT_FALSE(defaults.boolForKey(key)) << text;
    }
    set(QStringLiteral(" 42 apples"));
    EXPECT_EQ(defaults.integerForKey(key), 42);
    set(QStringLiteral("+0.25"));
    EXPECT_EQ(defaults.doubleForKey(key), 0.25);
    EXPECT_EQ(defaults.integerForKey(key), 0);
    set(-1.9);
    EXPECT_EQ(defaults.integerForKey(key), -1);
    EXPECT_TRUE(defaults.boolForKey(key));
    EXPECT_EQ(defaults.stringForKey(key), QStringLiteral("-1.9"));
    set(1e300);
    EXPECT_EQ(defaults.integerForKey(key), 0);
    set(true);
    EXPECT_EQ(defaults.integerForKey(key), 1);
    EXPECT_EQ(defaults.stringForKey(key), QStringLiteral("1"));
}

TEST_F(UserDefaultsTest, ListsAreNeitherTextNorNumber)
{
    UserDefaults defaults(domain);
    defaults.setObject(QVariantList{1}, key);
    EXPECT_TRUE(defaults.stringForKey(key).isNull());
    EXPECT_FALSE(defaults.boolForKey(key));
    EXPECT_EQ(defaults.integerForKey(key), 0);
    EXPECT_EQ(defaults.doubleForKey(key), 0);
    EXPECT_FALSE(defaults.dateForKey(key).isValid());
}

TEST_F(UserDefaultsTest, ThreadsShareThem)
{
    UserDefaults defaults(domain);
    const auto work = [&](const QString &prefix) {
        for (int i = 0; i < 20; ++i) {
            defaults.setBool(true, prefix + QString::number(i));
            EXPECT_TRUE(defaults.boolForKey(prefix + QString::number(i)));
        }
    };
    std::thread one(work, QStringLiteral("one"));
    std::thread two(work, QStringLiteral("two"));
    one.join();
    two.join();
    EXPECT_EQ(stored().size(), 40);
}

TEST_F(UserDefaultsTest, TheStandardOnesAreTheProgramsOwn)
{
    UserDefaults::standardUserDefaults().setBool(true, key);
    EXPECT_TRUE(UserDefaults(QStringLiteral("test_platform")).boolForKey(key));
}

} // namespace
