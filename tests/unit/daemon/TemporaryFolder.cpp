#include "unit/daemon/TemporaryFolder.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <pwd.h>
#include <stdexcept>
#include <sys/stat.h>
#include <unistd.h>

namespace velq::testing
{

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder()
{
    std::string pattern = fs::temp_directory_path() / "velq-XXXXXX";
    if (mkdtemp(pattern.data()) == nullptr)
        throw std::runtime_error("mkdtemp");
    m_path = pattern;
    fs::permissions(m_path, fs::perms(0755));
}

TemporaryFolder::~TemporaryFolder()
{
    std::error_code ignored;
    fs::remove_all(m_path, ignored);
}

void TemporaryFolder::write(const std::string &name, const std::string &content) const
{
    const mode_t before = umask(022);
    const fs::path file = m_path / name;
    fs::create_directories(file.parent_path());
    std::ofstream(file) << content;
    umask(before);
}

std::string TemporaryFolder::read(const std::string &name) const
{
    std::ifstream file(m_path / name);
    return {std::istreambuf_iterator<char>(file), {}};
}

GrantsFolder::GrantsFolder()
{
    write("etc/velq/authorized.d/" + std::to_string(geteuid()), goodGrant());
}

fs::path GrantsFolder::grant() const
{
    return path() / "etc/velq/authorized.d" / std::to_string(geteuid());
}

std::string GrantsFolder::goodGrant()
{
    const passwd *entry = getpwuid(geteuid());
    return std::to_string(geteuid()) + ' ' + (entry == nullptr ? "" : entry->pw_name) + '\n';
}

} // namespace velq::testing
