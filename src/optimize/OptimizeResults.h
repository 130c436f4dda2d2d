#pragma once

#include "scanner/NetStatus.h"

#include <array>

namespace velq::optimizeresults
{

/// The items by their places.
enum Item { CardPriority, MTU, CardCache, NameServers, Count };

/// The lines that an item shows, word by word.
struct Lines {
    NetStatus fine;
    NetStatus problem;
};

/// By the items' places. Made at the first use; any thread.
const std::array<Lines, Count> &lines();

} // namespace velq::optimizeresults
