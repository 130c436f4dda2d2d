#pragma once

#include "nettools/lib/Tool.h"

#include <stdexcept>
#include <string_view>

namespace velq::nettools
{

/// An argument that nothing can be made of, as a sentence for a person.
class Misuse : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// "on" or "off"; throws Misuse.
bool switchFrom(std::string_view word);

/// Does what the form of that name is for; it is one of Forms.h, and the number of its arguments
/// has been looked at. Throws Refusal and Misuse; then nothing has been changed, or the sentence
/// says what.
void perform(std::string_view form, Arguments arguments, Output &output);

} // namespace velq::nettools
