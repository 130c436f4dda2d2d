#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace velq::testing
{

/// A folder of the test's own, removed with everything in it.
class TemporaryFolder
{
public:
    TemporaryFolder() { m_path = mkdtemp(m_pattern.data()); }
    TemporaryFolder(const TemporaryFolder &) = delete;
    TemporaryFolder &operator=(const TemporaryFolder &) = delete;
    ~TemporaryFolder() { std::filesystem::remove_all(m_path); }

    const std::filesystem::path &path() const { return m_path; }

    /// Writes a file into it; the file's path.
    std::string write(const std::string &name, const std::string &text) const
    {
        const auto file = m_path / name;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file) << text;
        return file;
    }

    static std::string textOf(const std::filesystem::path &file)
    {
        std::ifstream stream(file);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

private:
    std::string m_pattern = std::filesystem::temp_directory_path() / "velq-test-XXXXXX";
    std::filesystem::path m_path;
};

} // namespace velq::testing
