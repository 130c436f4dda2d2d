#include "common/AssertionFailure.h"

namespace velq
{

AssertionFailure::AssertionFailure(std::string function, std::string file,
                                   const std::string &description)
    : std::logic_error(description)
    , m_function(std::move(function))
    , m_file(std::move(file))
{
}

void requireInFunction(bool condition, const char *function, const char *file,
                       const char *description)
{
    if (!condition)
        throw AssertionFailure(function, file, description);
}

} // namespace velq
