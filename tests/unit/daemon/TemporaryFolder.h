#pragma once

#include <filesystem>
#include <string>

namespace velq::testing
{

/// A folder of the test's own that nobody else can write; gone with its object.
class TemporaryFolder
{
public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder &) = delete;
    TemporaryFolder &operator=(const TemporaryFolder &) = delete;
    ~TemporaryFolder();

    std::filesystem::path path() const { return m_path; }
    /// Makes the folders on the way, too.
    void write(const std::string &name, const std::string &content) const;
    /// Empty when there is no such file.
    std::string read(const std::string &name) const;

private:
    std::filesystem::path m_path;
};

/// The etc/velq/authorized.d of an installation, with a good grant for the user that runs the test.
class GrantsFolder : public TemporaryFolder
{
public:
    GrantsFolder();

    /// The grant of the user who runs the test.
    std::filesystem::path grant() const;
    static std::string goodGrant();
};

} // namespace velq::testing
