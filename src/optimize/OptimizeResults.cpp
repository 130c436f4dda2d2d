#include "optimize/OptimizeResults.h"

namespace velq::optimizeresults
{

namespace
{

NetStatus fine(const QString &name, const QString &des)
{
    return {.error = false, .name = name, .des = des, .subErrorView = nullptr};
}

NetStatus problem(const QString &name, const QString &des)
{
    return {.error = true, .name = name, .des = des, .subErrorView = nullptr};
}

} // namespace

const std::array<Lines, Count> &lines()
{
    static const std::array<Lines, Count> all{
        Lines{fine(QStringLiteral("Good"),
                   QStringLiteral("Your network runs at its top performance")),
              problem(QStringLiteral("Not Good"),
                      QStringLiteral("The speed of Network card 1 is faster than Network card 2. "
                                     "Please switch to Network card 1."))},
        Lines{fine(QStringLiteral("Good"), QStringLiteral("The MTU is set reasonably.")),
              problem(QStringLiteral("Not Good"),
                      QStringLiteral("The MTU is set\u00a0unreasonably\u00a0which may slow down "
                                     "your network speed."))},
        Lines{fine(QStringLiteral("No need to flush"),
                   QStringLiteral("Please enjoy smooth surfing.")),
              problem(QStringLiteral("Recommend to flush"),
                      QStringLiteral("Too many Network card caches, which may slow down your "
                                     "surfing speed."))},
        Lines{fine(QStringLiteral("Connectivity: Good"),
                   QStringLiteral("All is good. Please enjoy smooth surfing.")),
              problem(QStringLiteral("Connectivity: Bad"),
                      QStringLiteral("Please switch to a faster DNS server."))},
    };
    return all;
}

} // namespace velq::optimizeresults
