#include "nettools/Table.h"
#include "nettools/lib/Run.h"

#include <vector>

int main(int argc, char **argv)
{
    constexpr auto tool = velq::nettools::toolNamed(VELQ_NETTOOL);
    // A caller may leave out even the program's name.
    const std::vector<std::string_view> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
    return velq::nettools::runTool(tool, arguments);
}
