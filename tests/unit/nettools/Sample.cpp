#include "unit/nettools/Sample.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

namespace velq::testing
{

std::string sample(const std::string &name)
{
    std::ifstream file(VELQ_SAMPLES "/" + name);
    std::string text{std::istreambuf_iterator<char>(file), {}};
    EXPECT_FALSE(text.empty()) << name;
    return text;
}

} // namespace velq::testing
