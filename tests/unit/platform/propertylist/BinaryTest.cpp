#include "platform/linux/propertylist/Node.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <plist/plist.h>

namespace
{

using velq::propertylist::Node;
using velq::propertylist::parsed;
using velq::propertylist::xmlOf;

// Puts a binary list together from its objects, as they stand in the file; references and offsets
// are of two bytes.
struct Binary {
    std::vector<std::string> objects;
    uint64_t root = 0;
    uint64_t offsetSize = 2;
    uint64_t referenceSize = 2;
    uint64_t countMore = 0;
    uint64_t tableShift = 0;
    uint64_t offsetShift = 0;

    static std::string number(uint64_t value, int size)
    {
        std::string bytes;
        for (int i = size - 1; i >= 0; --i)
            bytes += static_cast<char>(value >> (8 * i) & 0xff);
        return bytes;
    }

    std::string bytes() const
    {
        std::string all = "bplist00";
        std::string table;
        for (const std::string &object : objects) {
            table += number(all.size() + offsetShift, 2);
            all += object;
        }
        const uint64_t tableAt = all.size() + tableShift;
        return all + table + std::string(6, '\0') + number(offsetSize, 1) + number(referenceSize, 1)
            + number(objects.size() + countMore, 8) + number(root, 8) + number(tableAt, 8);
    }
};

std::string references(std::initializer_list<uint64_t> to)
{
    std::string bytes;
    for (const uint64_t each : to)
        bytes += Binary::number(each, 2);
    return bytes;
}

std::string hex(std::string_view digits)
{
    std::string bytes;
    for (size_t i = 0; i + 1 < digits.size(); i += 2)
        bytes += static_cast<char>(std::stoi(std::string(digits.substr(i, 2)), nullptr, 16));
    return bytes;
}

bool reads(const Binary &binary)
{
    return parsed(binary.bytes()) != nullptr;
}

const std::string emptyArray = hex("a0");

// {"a": ["b", -1, 0.5, date, 3 bytes, "网", true]}
Binary everyKind()
{
    return {{hex("d1") + references({1, 2}), hex("5161"),
             hex("a7") + references({3, 4, 5, 6, 7, 8, 9}), hex("5162"),
             hex("13") + std::string(8, '\xff'), hex("233fe0") + std::string(6, '\0'),
             hex("33") + std::string(8, '\0'), hex("43000102"), hex("617f51"), hex("09")}};
}

TEST(BinaryTest, ReadsEveryKindOfValue)
{
    const Node root = parsed(everyKind().bytes());
    ASSERT_NE(root, nullptr);
    const std::string xml = xmlOf(root.get()).value_or("");
    for (const char *const value :
         {"<key>a</key>", "<string>b</string>", "<integer>-1</integer>", "<real>0.5</real>",
          "<date>2001-01-01T00:00:00Z</date>", "AAEC", "<string>\xe7\xbd\x91</string>", "<true/>"})
        EXPECT_NE(xml.find(value), std::string::npos) << xml;
}

TEST(BinaryTest, EveryCutIsRefused)
{
    const std::string whole = everyKind().bytes();
    for (size_t length = 0; length < whole.size(); ++length)
        EXPECT_EQ(parsed(whole.substr(0, length)), nullptr) << length;
}

TEST(BinaryTest, ADamagedByteIsRefusedOrRead)
{
    const std::string whole = everyKind().bytes();
    for (size_t at = 8; at < whole.size(); ++at) {
        for (int byte = 0; byte < 256; ++byte) {
            std::string damaged = whole;
            damaged[at] = static_cast<char>(byte);
            const Node root = parsed(damaged);
            // Written or refused, but gone through.
            if (root != nullptr)
                (void)xmlOf(root.get());
        }
    }
    EXPECT_NE(parsed(whole), nullptr);
}

TEST(BinaryTest, CyclesAreRefused)
{
    EXPECT_FALSE(reads({{hex("a1") + references({0})}}));
    EXPECT_FALSE(reads({{hex("a1") + references({1}), hex("a1") + references({0})}}));
    EXPECT_FALSE(reads({{hex("d1") + references({1, 0}), hex("5161")}}));
}

TEST(BinaryTest, NestingIsBounded)
{
    Binary deep;
    for (uint64_t i = 1; i < 64; ++i)
        deep.objects.push_back(hex("a1") + references({i}));
    deep.objects.push_back(emptyArray);
    EXPECT_TRUE(reads(deep));
    deep.objects.back() = hex("a1") + references({64});
    deep.objects.push_back(emptyArray);
    EXPECT_FALSE(reads(deep));
}

TEST(BinaryTest, WhatUnfoldsWithoutEndIsRefused)
{
    Binary doubled;
    for (uint64_t i = 1; i < 50; ++i)
        doubled.objects.push_back(hex("a2") + references({i, i}));
    doubled.objects.push_back(emptyArray);
    EXPECT_FALSE(reads(doubled));

    // A long text, ten thousand times.
    Binary repeated{{hex("af112710"), hex("5f112710")}};
    for (int i = 0; i < 10'000; ++i)
        repeated.objects[0] += references({1});
    repeated.objects[1] += std::string(10'000, 'a');
    EXPECT_FALSE(reads(repeated));
}

TEST(BinaryTest, ReferencesAndOffsetsStayInside)
{
    EXPECT_FALSE(reads({{hex("a1") + references({7})}}));
    EXPECT_FALSE(reads({.objects = {emptyArray}, .root = 1}));
    EXPECT_FALSE(reads({.objects = {emptyArray}, .root = UINT64_MAX}));
    EXPECT_FALSE(reads({.objects = {emptyArray}, .offsetSize = 0}));
    EXPECT_FALSE(reads({.objects = {emptyArray}, .offsetSize = 255}));
    EXPECT_FALSE(reads({.objects = {emptyArray}, .referenceSize = 0}));
    EXPECT_FALSE(reads({.objects = {emptyArray}, .referenceSize = 9}));
    EXPECT_FALSE(reads({.objects = {emptyArray}, .countMore = 1}));
    EXPECT_FALSE(reads({.objects = {emptyArray}, .countMore = UINT64_MAX / 2}));
    // An index whose place in the table is beyond what a number holds.
    const uint64_t half = uint64_t{1} << 63;
    EXPECT_FALSE(reads({.objects = {emptyArray}, .root = half, .countMore = half}));
    EXPECT_FALSE(reads({.objects = {emptyArray}, .tableShift = 1}));
    EXPECT_FALSE(reads({.objects = {emptyArray}, .tableShift = UINT64_MAX - 20}));
    EXPECT_FALSE(reads({.objects = {emptyArray}, .offsetShift = 1}));
    EXPECT_FALSE(reads({.objects = {emptyArray}, .offsetShift = 0x7000}));
    EXPECT_FALSE(reads({}));
}

TEST(BinaryTest, ContentsStayInside)
{
    for (const std::string &object :
         {hex("5261"), hex("5f11ffff"), hex("4f13ffffffffffffffff"), hex("6f1380ffffffffffffff"),
          hex("af1310ffffffffffffff"), hex("df1310ffffffffffffff"), hex("5f14"), hex("5f23"),
          hex("5f"), hex("13"), hex("14"), hex("15"), hex("23"), hex("33"), hex("32"), hex("8f"),
          hex("a1"), hex("d1")})
        EXPECT_FALSE(reads({{object}})) << object;
}

TEST(BinaryTest, OnlyKnownKindsAreRead)
{
    for (const std::string &object :
         {hex("00"), hex("0f"), hex("70"), hex("90"), hex("b0"), hex("c0"), hex("e0"), hex("f0")})
        EXPECT_FALSE(reads({{object}})) << object;
    // A number as key.
    EXPECT_FALSE(reads({{hex("d1") + references({1, 1}), hex("1001")}}));
}

TEST(BinaryTest, TextsAreTexts)
{
    EXPECT_FALSE(reads({{hex("5180")}}));
    EXPECT_FALSE(reads({{hex("526100")}}));
    EXPECT_FALSE(reads({{hex("610000")}}));
    EXPECT_FALSE(reads({{hex("61d83c")}}));
    EXPECT_FALSE(reads({{hex("61df4e")}}));
    EXPECT_FALSE(reads({{hex("62df4ed83c")}}));
    EXPECT_TRUE(reads({{hex("62d83cdf4e")}}));
}

} // namespace
