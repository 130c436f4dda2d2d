#include "platform/linux/propertylist/Node.h"
#include "unit/platform/propertylist/ListFolder.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <plist/plist.h>

namespace
{

using velq::propertylist::entriesOf;
using velq::propertylist::Node;
using velq::propertylist::parsed;
using velq::propertylist::scalarNode;
using velq::propertylist::scalarText;
using velq::propertylist::xmlOf;

std::string xml(const std::string &body)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
           "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
           "<plist version=\"1.0\">"
        + body + "</plist>\n";
}

bool reads(const std::string &body)
{
    return parsed(xml(body)) != nullptr;
}

std::string nested(size_t levels)
{
    std::string text;
    for (size_t i = 0; i < levels; ++i)
        text += "<array>";
    for (size_t i = 0; i < levels; ++i)
        text += "</array>";
    return text;
}

// Its XML form, the frame left out.
std::string written(const std::string &body)
{
    const Node root = parsed(xml(body));
    const std::string whole = root ? xmlOf(root.get()).value_or("") : "";
    const size_t begin = whole.find("<plist version=\"1.0\">\n");
    return begin == std::string::npos ? whole : whole.substr(begin + 22, whole.size() - begin - 31);
}

TEST(XmlTest, EveryKindOfValueOutlivesBeingWritten)
{
    for (const char *const value :
         {"<true/>", "<false/>", "<integer>0</integer>", "<integer>-5</integer>",
          "<integer>-9223372036854775808</integer>", "<integer>18446744073709551615</integer>",
          "<real>0.25</real>", "<real>-1.5</real>", "<string></string>",
          "<string>  two  blanks\tand a tab </string>", "<string>&lt;a &amp; b&gt;</string>",
          "<string>\xe7\xbd\x91\xe7\xbb\x9c \xf0\x9f\x8d\x8f</string>",
          "<date>2001-01-02T00:00:00Z</date>", "<date>4001-01-01T00:00:00Z</date>",
          "<date>1900-12-31T23:59:59Z</date>", "<array/>", "<dict/>"}) {
        EXPECT_EQ(written(value), std::string(value) + "\n");
    }
    EXPECT_EQ(written("<data>AAEC</data>"), "<data>\nAAEC\n</data>\n");
    EXPECT_EQ(written("<real>0.1</real>"), "<real>0.10000000000000001</real>\n");
}

TEST(XmlTest, TheOrderOfKeysStays)
{
    const Node root = parsed(xml("<dict><key>b</key><true/><key>a</key><false/></dict>"));
    ASSERT_NE(root, nullptr);
    const auto entries = entriesOf(root.get());
    ASSERT_EQ(entries.size(), 2U);
    EXPECT_EQ(entries[0].key, "b");
    EXPECT_EQ(entries[1].key, "a");
}

TEST(XmlTest, TextsMayBeWrittenInOtherWays)
{
    EXPECT_EQ(written("<string>a&#x7f51;&#98;&apos;&quot;</string>"),
              "<string>a\xe7\xbd\x91"
              "b'\"</string>\n");
    EXPECT_EQ(written("<string>a<![CDATA[<b>&c]]>d</string>"),
              "<string>a&lt;b&gt;&amp;cd</string>\n");
    EXPECT_EQ(written(" <!-- <true/> --> <true></true> <!-- after --> "), "<true/>\n");
    EXPECT_NE(parsed("\xef\xbb\xbf<plist version=\"1.0\"><true/></plist>"), nullptr);
}

TEST(XmlTest, EveryCutIsRefused)
{
    const std::string whole = xml("<dict><key>a</key><array><string>b &amp; c</string><date>"
                                  "2001-01-02T00:00:00Z</date><data>AAEC</data></array></dict>");
    const size_t end = whole.find("</plist>") + 8;
    for (size_t length = 0; length < end; ++length)
        EXPECT_EQ(parsed(whole.substr(0, length)), nullptr) << whole.substr(0, length);
    EXPECT_NE(parsed(whole), nullptr);
}

TEST(XmlTest, ADamagedByteIsRefusedOrReadAndWritten)
{
    const std::string whole = xml("<dict><key>a</key><array><string>b &#99;</string><real>1.5"
                                  "</real><data>AAEC</data><true/></array></dict>");
    for (size_t at = 0; at < whole.size(); ++at) {
        for (const char byte : {'\0', '<', '>', '/', '&', ';', '[', 'x', '\x80', '\xff'}) {
            std::string damaged = whole;
            damaged[at] = byte;
            const Node root = parsed(damaged);
            EXPECT_TRUE(root == nullptr || xmlOf(root.get())) << damaged;
        }
    }
}

TEST(XmlTest, EntitiesAreNeitherDeclaredNorFetched)
{
    const std::string bomb = R"(<!ENTITY a "aaaaaaaaaa"><!ENTITY b "&a;&a;&a;&a;&a;&a;&a;&a;">)";
    const std::string external = "<!ENTITY a SYSTEM \"file:///etc/passwd\">";
    const std::string parameter = "<!ENTITY % a SYSTEM \"http://localhost/\"> %a;";
    for (const std::string &declared : {bomb, external, parameter, std::string()}) {
        EXPECT_EQ(parsed("<!DOCTYPE plist [" + declared
                         + "]><plist version=\"1.0\"><string>&a;</string></plist>"),
                  nullptr);
    }
    EXPECT_FALSE(reads("<string>&a;</string>"));
    EXPECT_FALSE(reads("<!DOCTYPE plist><true/>"));
    EXPECT_EQ(parsed("<!DOCTYPE plist SYSTEM <!ENTITY a 'b'>><plist><true/></plist>"), nullptr);
}

TEST(XmlTest, NestingIsBounded)
{
    EXPECT_TRUE(reads(nested(64)));
    EXPECT_FALSE(reads(nested(65)));
    EXPECT_FALSE(reads(nested(200'000)));
    std::string unclosed = "<plist version=\"1.0\">";
    for (int i = 0; i < 1'000'000; ++i)
        unclosed += "<a>";
    EXPECT_EQ(parsed(unclosed), nullptr);
}

TEST(XmlTest, SizeIsBounded)
{
    const size_t frame = xml("<string></string>").size();
    const size_t largest = velq::propertylist::largestList;
    EXPECT_TRUE(reads("<string>" + std::string(largest - frame, 'a') + "</string>"));
    EXPECT_FALSE(reads("<string>" + std::string(largest - frame + 1, 'a') + "</string>"));
}

TEST(XmlTest, WhatIsNoPropertyListIsRefused)
{
    for (const char *const body : {"",
                                   "<true/><true/>",
                                   "<key>a</key>",
                                   "<plist><true/></plist>",
                                   "<unknown/>",
                                   "text",
                                   "<dict><true/></dict>",
                                   "<dict><key>a</key></dict>",
                                   "<dict><key>a</key><key>b</key></dict>",
                                   "<dict><key>a</key>text<true/></dict>",
                                   "<array><key>a</key></array>",
                                   "<true>text</true>",
                                   "<string><b/></string>",
                                   "<string a=\"b\"></string>",
                                   "<string></key>",
                                   "<array></dict>",
                                   "<true/",
                                   "<true / >",
                                   "</plist>",
                                   "<string>a<!-- b --></string>"})
        EXPECT_FALSE(reads(body)) << body;
    for (const char *const whole : {"", " ", "<plist version=\"1.0\"/>", "no property list",
                                    "{ a = b; }", "<true/>", "<plist><true/></plist>x"})
        EXPECT_EQ(parsed(whole), nullptr) << whole;
}

TEST(XmlTest, ValuesOfOtherFormsAreRefused)
{
    for (const char *const value :
         {"<integer></integer>", "<integer/>", "<integer>4x</integer>", "<integer>1.5</integer>",
          "<integer>99999999999999999999999</integer>", "<real></real>", "<real>1,5</real>",
          "<date></date>", "<date>yesterday</date>", "<date>2001-01-02</date>", "<data>A*</data>",
          "<data>&amp;</data>"})
        EXPECT_FALSE(reads(value)) << value;
}

TEST(XmlTest, OnlyTextIsText)
{
    for (const char *const text :
         {"\x01", "\x1b", "\x80", "\xc0\xaf", "\xe0\x80\xaf", "\xed\xa0\x80", "\xf4\x90\x80\x80",
          "\xf8\x88\x80\x80\x80", "\xe7\xbd", "&#0;", "&#1;", "&#xd800;", "&#x110000;", "&#;",
          "&#x;", "&#-5;", "&;", "&amp", "&"})
        EXPECT_FALSE(reads("<string>" + std::string(text) + "</string>")) << text;
}

TEST(XmlTest, WhatCouldNotBeReadIsNotWritten)
{
    for (const char *const text : {"\x1b", "\xff"}) {
        const Node root(plist_new_string(text));
        EXPECT_FALSE(xmlOf(root.get())) << text;
    }
    const std::string large(velq::propertylist::largestList, 'a');
    EXPECT_FALSE(xmlOf(Node(plist_new_string(large.c_str())).get()));
}

TEST(XmlTest, ScalarsAreWhatXmlSays)
{
    EXPECT_EQ(scalarText(scalarNode("integer", "-5").get()), "-5");
    EXPECT_EQ(scalarText(scalarNode("real", "0.25").get()), "0.25");
    EXPECT_EQ(scalarText(scalarNode("date", "4001-01-01T00:00:00Z").get()), "4001-01-01T00:00:00Z");
    EXPECT_EQ(scalarNode("integer", "five"), nullptr);
    EXPECT_EQ(scalarNode("integer", "5</integer><integer>6"), nullptr);
}

TEST(XmlTest, NumbersDoNotDependOnTheLocale)
{
    const velq::testing::ListFolder folder;
    const std::string make = "localedef -i de_DE -f UTF-8 " + folder.path("de_DE.UTF-8");
    setenv("LOCPATH", folder.path("").c_str(), 1);
    if (std::system(make.c_str()) != 0 || std::setlocale(LC_ALL, "de_DE.UTF-8") == nullptr)
        GTEST_SKIP() << "the machine cannot make a German locale";
    const Node root = parsed(xml("<real>0.25</real>"));
    double value = 0;
    plist_get_real_val(root.get(), &value);
    (void)std::setlocale(LC_ALL, "C");
    EXPECT_EQ(value, 0.25);
}

} // namespace
