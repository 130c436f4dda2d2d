#pragma once

#include "cli/Arguments.h"
#include "cli/Misuse.h"
#include "cli/Report.h"

#include <algorithm>
#include <span>

namespace velq::cli
{

/// One of the things that a command does, named by its operand.
struct Action {
    const char *name;
    Report (*run)();
};

inline QStringList namesOf(std::span<const Action> actions)
{
    QStringList names;
    for (const Action &action : actions)
        names.append(QLatin1String(action.name));
    return names;
}

/// What the operand may be.
template <const auto &actions> QStringList namesOf()
{
    return namesOf(actions);
}

/// Does what the operand says. Throws Misuse when that is none of them.
inline Report performed(std::span<const Action> actions, const Arguments &arguments)
{
    const QString name = arguments.operands.first();
    const auto action = std::ranges::find(
        actions, name, [](const Action &one) { return QString::fromLatin1(one.name); });
    if (action == actions.end())
        throw Misuse(QStringLiteral("'%1' is none of its actions, which are %2")
                         .arg(name, namesOf(actions).join(QStringLiteral(", "))));
    return action->run();
}

} // namespace velq::cli
