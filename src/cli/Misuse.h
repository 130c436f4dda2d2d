#pragma once

#include <QString>

#include <stdexcept>

namespace velq::cli
{

/// Thrown by a command that, on a closer look, was called in a way that makes no sense; it has done
/// nothing.
class Misuse : public std::invalid_argument
{
public:
    /// `complaint` is the end of a sentence.
    explicit Misuse(const QString &complaint)
        : std::invalid_argument(complaint.toStdString())
    {
    }
};

} // namespace velq::cli
