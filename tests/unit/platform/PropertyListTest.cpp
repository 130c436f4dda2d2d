#include "platform/PropertyList.h"

#include <QDateTime>
#include <QDir>
#include <QTemporaryDir>
#include <QTimeZone>
#include <gtest/gtest.h>

#include <QFile>

namespace
{

using velq::PropertyList;

QByteArray xml(const char *body)
{
    return QByteArray("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">") + body
        + "</plist>\n";
}

TEST(PropertyListTest, ReadsEveryKindOfValue)
{
    const auto read = PropertyList::dictionaryFromData(
        xml("<dict><key>text</key><string>\xe7\xbd\x91\xe7\xbb\x9c</string><key>yes</key><true/>"
            "<key>number</key><integer>42</integer><key>real</key><real>1.5</real>"
            "<key>data</key><data>AAEC</data><key>date</key><date>2001-01-02T00:00:00Z</date>"
            "<key>list</key><array><string>a</string><dict><key>k</key><string>v</string></dict>"
            "</array></dict>"));
    ASSERT_TRUE(read.has_value());
    EXPECT_EQ(read->value(QStringLiteral("text")).toString(), QStringLiteral("网络"));
    EXPECT_TRUE(read->value(QStringLiteral("yes")).toBool());
    EXPECT_EQ(read->value(QStringLiteral("number")).toInt(), 42);
    EXPECT_DOUBLE_EQ(read->value(QStringLiteral("real")).toDouble(), 1.5);
    EXPECT_EQ(read->value(QStringLiteral("data")).toByteArray(), QByteArray("\0\1\2", 3));
    EXPECT_EQ(read->value(QStringLiteral("date")).toDateTime(),
              QDateTime(QDate(2001, 1, 2), QTime(0, 0), QTimeZone::utc()));
    const QVariantList list = read->value(QStringLiteral("list")).toList();
    ASSERT_EQ(list.size(), 2);
    EXPECT_EQ(list.at(1).toMap().value(QStringLiteral("k")).toString(), QStringLiteral("v"));
}

TEST(PropertyListTest, ReadsTheBinaryForm)
{
    // {"a": "b"}: header, the three objects, their offsets, the trailer.
    const QByteArray binary = QByteArray::fromHex("62706c6973743030"
                                                  "d10102"
                                                  "5161"
                                                  "5162"
                                                  "080b0d"
                                                  "000000000000"
                                                  "01"
                                                  "01"
                                                  "0000000000000003"
                                                  "0000000000000000"
                                                  "000000000000000f");
    const auto read = PropertyList::dictionaryFromData(binary);
    ASSERT_TRUE(read.has_value());
    EXPECT_EQ(read->value(QStringLiteral("a")).toString(), QStringLiteral("b"));
}

TEST(PropertyListTest, WhatIsNoDictionaryIsNothing)
{
    EXPECT_FALSE(PropertyList::dictionaryFromData("").has_value());
    EXPECT_FALSE(PropertyList::dictionaryFromData("no property list").has_value());
    EXPECT_FALSE(PropertyList::dictionaryFromData(xml("<array/>")).has_value());
    EXPECT_FALSE(PropertyList::dictionaryFromData("bplist00").has_value());
}

TEST(PropertyListTest, WhatIsWrittenIsReadAgain)
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("a.plist"));
    const QVariantMap written{{QStringLiteral("KeepAlive"), true},
                              {QStringLiteral("Version"), 7U},
                              {QStringLiteral("Label"), QString()},
                              {QStringLiteral("Program"), QVariant()},
                              {QStringLiteral("Empty"), QStringLiteral("")}};
    EXPECT_TRUE(PropertyList::writeDictionary(written, file));
    const QVariantMap read = PropertyList::dictionaryFromFile(file).value_or(QVariantMap());
    EXPECT_EQ(read.keys(),
              QStringList({QStringLiteral("Empty"), QStringLiteral("KeepAlive"),
                           QStringLiteral("Version")}));
    EXPECT_EQ(read.value(QStringLiteral("Version")).toInt(), 7);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
}

TEST(PropertyListTest, WhatCannotBeWrittenChangesNothing)
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("a.plist"));
    const QString key = QStringLiteral("key");
    EXPECT_TRUE(PropertyList::writeDictionary({{key, true}}, file));
    EXPECT_FALSE(PropertyList::writeDictionary({{key, QStringLiteral("\x1b")}}, file));
    EXPECT_FALSE(PropertyList::changeDictionary({{key, QVariant::fromValue(QChar())}}, file));
    EXPECT_TRUE(PropertyList::dictionaryFromFile(file)->value(key).toBool());
    EXPECT_FALSE(PropertyList::writeDictionary({}, folder.filePath(QStringLiteral("none/a"))));
    EXPECT_TRUE(PropertyList::changeDictionary({}, folder.filePath(QStringLiteral("none/a"))));
}

TEST(PropertyListTest, AMissingFileIsNothing)
{
    const QTemporaryDir folder;
    EXPECT_FALSE(PropertyList::dictionaryFromFile(folder.filePath(QStringLiteral("none.plist"))));
    EXPECT_FALSE(PropertyList::dictionaryFromFile(folder.path()));
}

} // namespace
