#pragma once

#include <stdexcept>
#include <string>

namespace velq
{

/// A broken invariant: a programming error. Ends the program unless somebody catches it; what() is
/// the description.
class AssertionFailure : public std::logic_error
{
public:
    AssertionFailure(std::string function, std::string file, const std::string &description);

    /// The signature of the function that found it.
    const std::string &function() const noexcept { return m_function; }
    /// The source file, without a suffix.
    const std::string &file() const noexcept { return m_file; }

private:
    std::string m_function;
    std::string m_file;
};

/// Throws an AssertionFailure unless `condition` holds. Any thread.
void requireInFunction(bool condition, const char *function, const char *file,
                       const char *description);

} // namespace velq
