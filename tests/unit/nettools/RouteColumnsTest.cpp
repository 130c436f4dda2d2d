#include "nettools/lib/RouteColumns.h"
#include "nettools/lib/RouteFlags.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <sys/socket.h>
#include <vector>

namespace
{

using namespace velq::nettools;

std::string read(const std::filesystem::path &path)
{
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<std::string> columnsOf(const std::string &line)
{
    std::istringstream stream(line);
    return {std::istream_iterator<std::string>(stream), {}};
}

class RouteSamples : public testing::TestWithParam<const char *>
{
protected:
    void SetUp() override
    {
        text = read(std::filesystem::path(VELQ_SAMPLES) / GetParam());
        ASSERT_FALSE(text.empty());
    }

    std::string text;
};

std::string laidOutAnew(const std::string &text)
{
    std::string result;
    uint8_t family = AF_INET;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        const auto columns = columnsOf(line);
        if (columns.size() == 1 && line.starts_with("Internet")) {
            family = line == "Internet:" ? AF_INET : AF_INET6;
            appendHeading(result, family);
        } else if (columns.size() < 4) {
            result += line + "\n";
        } else if (columns[0] != "Destination") {
            appendRow(result, family,
                      {columns[0], columns[1], columns[2], columns[3],
                       columns.size() > 4 ? columns[4] : std::string()});
        }
    }
    return result;
}

TEST_P(RouteSamples, OurLayoutIsTheirs)
{
    EXPECT_EQ(laidOutAnew(text), text);
}

// Every letter that a sample shows is one of ours, and stands where we would put it.
TEST_P(RouteSamples, TheirFlagsStandInOurOrder)
{
    const std::string ours = flagLetters(~0U);
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        const auto columns = columnsOf(line);
        if (columns.size() < 4 || columns[0] == "Destination")
            continue;
        size_t last = 0;
        for (const char letter : columns[2]) {
            const size_t place = ours.find(letter, last);
            ASSERT_NE(place, std::string::npos) << line;
            last = place + 1;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(PublicDocumentation, RouteSamples,
                         testing::Values("netstat-nr-en0.txt", "netstat-nr-bridge.txt"));

TEST(RouteColumns, LongTextPushesAndIsNotCut)
{
    std::string row;
    appendRow(
        row, AF_INET,
        {"192.168.100.100/32", "aa:bb:cc:dd:ee:ff:0:1", "UHLWIir", "averylongname00", "1200"});
    EXPECT_EQ(row, "192.168.100.100/32 aa:bb:cc:dd:ee:ff:0:1 UHLWIir   averylongname00   1200\n");
    row.clear();
    appendRow(row, AF_INET, {"default", "10.0.0.1", "UGHRDmCLS1W", "averylongname00", ""});
    EXPECT_EQ(row, "default            10.0.0.1           UGHRDmCLS1W averylongname00       \n");
}

TEST(RouteFlags, LettersComeInTheFixedOrder)
{
    EXPECT_EQ(flagLetters(0), "");
    EXPECT_EQ(flagLetters(flag::global | flag::protocolCloning | flag::configured | flag::gateway
                          | flag::up),
              "UGScg");
    EXPECT_EQ(flagLetters(flag::up | flag::host | flag::linkInfo | flag::wasCloned
                          | flag::interfaceScope | flag::interfaceReference | flag::router),
              "UHLWIir");
    EXPECT_EQ(flagLetters(flag::up | flag::host | flag::reject | flag::configured | flag::gateway),
              "UGHRS");
}

} // namespace
