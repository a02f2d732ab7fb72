// The objects on the topology view, in a fixed order from any place on: the management system, the
// subnets by topology id, the elements by device id.
//
//   TopologyPage page = objects.appendPage(filter, TopologyPosition{}, 200, json);
//   // json: [{"nodeClass":"subnet",…},…]; go on from page.last while page.more
//
// Thread-safety: thread-compatible. Failure: SimError.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "sqlite.h"
#include "topology_filter.h"

namespace ormasim {

// The kind of an object, by its place in the order, and its number within it.
struct TopologyPosition {
  std::int64_t kind = 0;
  std::int64_t number = -1;
};

// The opaque text for a position, and back; nothing when it is none that was handed out.
std::string markerFor(const TopologyPosition& position);
std::optional<TopologyPosition> topologyPositionOf(const std::string& marker);

struct TopologyPage {
  TopologyPosition last;
  bool more = false;
};

class TopologyObjects {
 public:
  explicit TopologyObjects(Database& database) : database_(database) {}

  // Appends an array of at most `limit` objects behind `after` for which the filter holds, read
  // in one transaction.
  TopologyPage appendPage(const TopologyFilter& filter, const TopologyPosition& after,
                          std::int64_t limit, std::string& out);

 private:
  Database& database_;
};

}  // namespace ormasim
