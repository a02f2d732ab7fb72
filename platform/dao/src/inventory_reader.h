// The reads of the inventory database (docs/inventory.sql).
//
// Thread-safety: thread-safe. A read that fails throws std::runtime_error with the reason, and
// "there is no such device" is an empty answer.
#pragma once

#include <functional>
#include <list>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "orma/dao/cursor_table.h"
#include "orma/dao/emf_comm_db_engine.h"
#include "orma/dao/session_pool.h"

namespace dao {

struct ResourceProperties {
  std::map<int, _SResProperty> found;
  std::set<int> ambiguous;  // ids that mean several resources, which are not in `found`
};

class InventoryReader {
 public:
  // One record for each distinct id that exists, in the order in which the ids first appear.
  std::list<stDevProperty> deviceProperties(const std::list<unsigned int>& ids);
  std::optional<std::string> versionName(unsigned int id);
  // Nothing when the device is unknown; an empty list when nobody said where it stands.
  std::optional<std::list<std::string>> locationParts(unsigned int id);
  // The resources that have these ids, cut to 32 bits, with all of their attributes.
  ResourceProperties resourceProperties(const std::set<int>& shortIds);
  std::list<NodeStruct> allNodes();
  std::list<NodeStruct> nodesById(const std::string& nodeId);

 private:
  void forEachRow(const std::string& statement, const std::vector<refl::CValue>& parameters,
                  const std::function<void(const CCursorTable&)>& use);
  void addElements(const std::vector<refl::CValue>& ids, ResourceProperties& result);
  void addAttributes(const std::vector<refl::CValue>& shortIds, ResourceProperties& result);
  std::list<NodeStruct> nodes(const std::string& condition,
                              const std::vector<refl::CValue>& parameters);

  SessionPool sessions_;
};

}  // namespace dao
