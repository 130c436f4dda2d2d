// Writes the manual pages of the net tools, from their table. Runs while building.

#include "nettools/Table.h"
#include "nettools/documents/ManualPage.h"
#include "nettools/lib/Help.h"

#include <cstdlib>
#include <fstream>

namespace
{

using namespace velq::nettools;

bool write(const std::string &path, const std::string &text)
{
    std::ofstream file(path, std::ios::binary);
    file << text << std::flush;
    return file.good();
}

} // namespace

// velq_nettools_documents FOLDER
int main(int argc, char **argv)
{
    static constexpr auto described = toolDescriptions();
    if (argc != 2)
        return EXIT_FAILURE;
    const std::string folder = argv[1];
    const bool done = std::ranges::all_of(described, [&folder](const Tool &tool) {
        return write(folder + "/" + manualPageName(tool) + ".1", manualPage(tool));
    });
    return done ? EXIT_SUCCESS : EXIT_FAILURE;
}
