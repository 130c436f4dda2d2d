#include "platform/PropertyList.h"

#include <QDateTime>
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

TEST(PropertyListTest, EveryCutOfAListIsNothingOrADictionary)
{
    const QByteArray whole = xml("<dict><key>a</key><array><string>b</string></array></dict>");
    const qsizetype closed = whole.indexOf("</plist>");
    for (qsizetype length = 0; length < closed; ++length) {
        const auto read = PropertyList::dictionaryFromData(QByteArrayView(whole).first(length));
        EXPECT_TRUE(!read || read->keys() == QStringList{QStringLiteral("a")} || read->isEmpty());
    }
}

TEST(PropertyListTest, NestingWithoutEndEnds)
{
    QByteArray body = "<dict><key>deep</key>";
    for (int level = 0; level < 300; ++level)
        body += "<array>";
    for (int level = 0; level < 300; ++level)
        body += "</array>";
    EXPECT_NO_FATAL_FAILURE(
        (void)PropertyList::dictionaryFromData(xml((body + "</dict>").constData())));
}

TEST(PropertyListTest, AMissingFileIsNothing)
{
    const QTemporaryDir folder;
    EXPECT_FALSE(PropertyList::dictionaryFromFile(folder.filePath(QStringLiteral("none.plist"))));
    EXPECT_FALSE(PropertyList::dictionaryFromFile(folder.path()));
}

} // namespace
