// Writes what is installed beside the command and made from its table. Runs while building.

#include "cli/documents/BashCompletion.h"
#include "cli/documents/ManualPage.h"

#include <cstdlib>
#include <fstream>

namespace
{

bool write(const char *path, const std::string &text)
{
    std::ofstream file(path, std::ios::binary);
    file << text << std::flush;
    return file.good();
}

} // namespace

// velq_documents MANUAL-PAGE COMPLETION TOOL...: the page names those of the tools.
int main(int argc, char **argv)
{
    using namespace velq::cli;
    if (argc < 3)
        return EXIT_FAILURE;
    const bool done = write(argv[1], manualPage({argv + 3, argv + argc}))
        && write(argv[2], bashCompletion().toStdString());
    return done ? EXIT_SUCCESS : EXIT_FAILURE;
}
