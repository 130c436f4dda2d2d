#include "support/application/Contents.h"

#include <filesystem>
#include <fstream>
#include <iterator>

namespace velq::testing
{

namespace
{

// Found once: the program's file may be deleted meanwhile.
const std::filesystem::path &contents()
{
    static const auto folder =
        std::filesystem::read_symlink("/proc/self/exe").parent_path().parent_path();
    return folder;
}

} // namespace

void tell(std::string_view line)
{
    std::ofstream(contents() / "log", std::ios::app) << (std::string(line) + '\n');
}

std::string identifier()
{
    std::ifstream stream(contents() / "Info.plist");
    const std::string list(std::istreambuf_iterator<char>(stream), {});
    const std::string before = "<key>CFBundleIdentifier</key><string>";
    const size_t begin = list.find(before) + before.size();
    return list.substr(begin, list.find('<', begin) - begin);
}

} // namespace velq::testing
