#include "process/nettools/Golden.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <regex>

namespace velq::testing
{

void expectGolden(const std::string &name, const ToolRun &run)
{
    const std::string path = VELQ_GOLDEN "/" + name + ".txt";
    const std::string actual = run.output + "--- errors\n" + run.errors + "--- status "
        + std::to_string(run.status) + "\n";
    if (getenv("VELQ_UPDATE_GOLDEN") != nullptr) {
        std::ofstream(path) << actual;
        return;
    }
    std::ifstream file(path);
    const std::string expected{std::istreambuf_iterator<char>(file), {}};
    EXPECT_EQ(actual, expected) << path;
}

std::string withoutTimes(const std::string &table)
{
    return std::regex_replace(table, std::regex(R"(( \S+)   1[0-9]{3}\n)"), "$1   1200\n");
}

} // namespace velq::testing
