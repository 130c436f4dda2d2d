#include "cli/Columns.h"

#include <gtest/gtest.h>

namespace
{

using velq::cli::columns;

QString table(const QStringList &rows)
{
    QList<QStringList> cells;
    cells.reserve(rows.size());
    for (const QString &row : rows)
        cells.append(row.split(u'|'));
    return columns(cells);
}

TEST(Columns, AreAsWideAsTheirLongestText)
{
    EXPECT_EQ(table({QStringLiteral("A|BB|C"), QStringLiteral("long|b|c")}),
              QStringLiteral("A     BB  C\nlong  b   c\n"));
}

TEST(Columns, NoLineEndsInBlanks)
{
    EXPECT_EQ(table({QStringLiteral("A|long"), QStringLiteral("a|b")}),
              QStringLiteral("A  long\na  b\n"));
}

TEST(Columns, NothingIsADash)
{
    EXPECT_EQ(columns({{QStringLiteral("A"), QString(), QStringLiteral("C")},
                       {QString(), QStringLiteral(""), QStringLiteral("c")}}),
              QStringLiteral("A  -  C\n-  -  c\n"));
}

TEST(Columns, ARowMayBeShorter)
{
    EXPECT_EQ(table({QStringLiteral("a"), QStringLiteral("long|b|c"), QStringLiteral("a|b")}),
              QStringLiteral("a\nlong  b  c\na     b\n"));
}

TEST(Columns, NoRowsAreNoText)
{
    EXPECT_EQ(columns({}), QString());
}

TEST(Columns, WideCharactersTakeTwoPlaces)
{
    EXPECT_EQ(table({QStringLiteral("有线|b"), QStringLiteral("abcd|b"), QStringLiteral("ａ|b"),
                     QStringLiteral("한글|b"), QStringLiteral("🌍x|b"), QStringLiteral("𠀀|b")}),
              QStringLiteral("有线  b\nabcd  b\nａ    b\n한글  b\n🌍x   b\n𠀀    b\n"));
}

TEST(Columns, MarksThatAreSetOnAnotherCharacterTakeNone)
{
    EXPECT_EQ(table({QStringLiteral("e\u0301|b"), QStringLiteral("a\u200db|b")}),
              QStringLiteral("e\u0301   b\na\u200db  b\n"));
}

TEST(Columns, ATextStaysOnItsLine)
{
    EXPECT_EQ(table({QStringLiteral("a\nb|c"), QStringLiteral("\t\x1b[2J|c")}),
              QStringLiteral("a b    c\n  [2J  c\n"));
}

} // namespace
