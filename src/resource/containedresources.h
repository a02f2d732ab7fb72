// What a network element contains, found by one graph query.
//
// Thread-safety: thread-safe on distinct results. Blocks in REST exchanges.
#pragma once

#include <cstdint>
#include <list>
#include <vector>

#include "emfresrecords.h"

// Appends what the network element of the first id contains and is of that main type: by type, what
// is of that sub type, too; otherwise, what has `ids` as the start of its path. 0; 1 when `ids` is
// empty; -1 when a page could not be read, with the resources of earlier pages appended.
std::int64_t QueryContainedResources(const std::vector<std::int64_t>& ids, std::list<Resource>& out,
                                     bool byType, std::int64_t mainType, std::int64_t subType);
