#include "manual/Page.h"

#include <gtest/gtest.h>

namespace
{

using velq::manual::Page;

// What is written after the first two sections' heads.
std::string body(const Page &page)
{
    const std::string &source = page.source();
    return source.substr(source.find(".SH BODY\n") + 9);
}

class PageBody : public testing::Test
{
protected:
    void SetUp() override { page.section("BODY"); }

    Page page{"velq-tool", "does its work"};
};

TEST_F(PageBody, BeginsWithItsNameAsManReadsIt)
{
    EXPECT_EQ(page.source().find(".TH VELQ-TOOL 1 \"\" \"Velq "), 0U) << page.source();
    EXPECT_NE(page.source().find("\n.SH NAME\nvelq-tool \\- does its work\n"), std::string::npos)
        << page.source();
}

TEST_F(PageBody, NoTextIsAnOrder)
{
    page.text(".br\n'as it is' \\fB-n\\fR");
    EXPECT_EQ(body(page), "\\&.br\n\\&'as it is' \\efB\\-n\\efR\n");
}

TEST_F(PageBody, LinesThatBeginWithABlankStayLines)
{
    page.text("Sentences\nthat go on.\n  -a ONE\n  -b TWO\nAnd on.");
    EXPECT_EQ(body(page),
              "\\&Sentences\n\\&that go on.\n.nf\n\\&  \\-a ONE\n\\&  \\-b TWO\n.fi\n\\&And on.\n");
}

TEST_F(PageBody, TheLastLineMayBeOneOfThem)
{
    page.text("A table:\n  1");
    EXPECT_EQ(body(page), "\\&A table:\n.nf\n\\&  1\n.fi\n");
}

TEST_F(PageBody, VerbatimLinesLoseTheBlanksAroundThem)
{
    page.verbatim("  velq status\n\n       velq --help \n   \n");
    EXPECT_EQ(body(page), ".nf\n\\&velq status\n\\&\n\\&velq \\-\\-help\n\\&\n.fi\n");
}

TEST_F(PageBody, AnItemHasATermAndAMeaning)
{
    page.item("-getinfo SERVICE", "Shows it.");
    EXPECT_EQ(body(page), ".TP\n.B \\-getinfo SERVICE\n\\&Shows it.\n");
}

TEST_F(PageBody, NothingIsNothing)
{
    page.text("");
    EXPECT_EQ(body(page), "");
}

} // namespace
