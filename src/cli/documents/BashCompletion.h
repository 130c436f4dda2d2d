#pragma once

#include <QString>

namespace velq::cli
{

/// What bash runs to complete the command's arguments.
QString bashCompletion();

} // namespace velq::cli
