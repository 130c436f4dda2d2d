#include "nettools/Networksetup.h"

#include "nettools/lib/Help.h"
#include "nettools/networksetup/Backend.h"
#include "nettools/networksetup/Commands.h"
#include "nettools/networksetup/Forms.h"

#include <algorithm>

namespace velq::nettools
{

namespace
{

const Form *formNamed(std::string_view name)
{
    const auto *found = std::ranges::find(networksetupForms, name, &Form::name);
    return found != networksetupForms.end() ? found : nullptr;
}

bool takes(const Form &form, size_t given)
{
    if (form.arguments.empty())
        return given == 0;
    const auto words = 1 + static_cast<size_t>(std::ranges::count(form.arguments, ' '));
    const bool more = form.arguments.find("...") != std::string_view::npos;
    return given == words || (more && given > words);
}

} // namespace

Outcome networksetup(Arguments arguments, Output &output)
{
    if (arguments.empty())
        return Outcome::misused("which form? --help shows all");
    const Form *form = formNamed(arguments[0]);
    if (form == nullptr)
        return Outcome::misused(
            std::string("unknown form ").append(arguments[0]).append("; --help shows all"));
    const Arguments rest = arguments.subspan(1);
    if (!takes(*form, rest.size()))
        return Outcome::misused("it is called so: networksetup " + callOf(*form));
    try {
        perform(form->name, rest, output);
    } catch (const Misuse &misuse) {
        return Outcome::misused(misuse.what());
    } catch (const Refusal &refusal) {
        return Outcome::failed(refusal.what());
    }
    return Outcome::done();
}

} // namespace velq::nettools
