#include "inventory_reader.h"

#include <algorithm>
#include <limits>
#include <stdexcept>
#include <unordered_map>

namespace dao {
namespace {

// Well below the number of parameters that either database takes in one statement.
constexpr std::size_t kIdsPerStatement = 500;

constexpr std::int64_t kLargestDeviceId = std::numeric_limits<std::uint32_t>::max();
constexpr std::int64_t kLargestResourceId = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kLargestType = std::numeric_limits<std::uint16_t>::max();

// Names the column in the failure of a value that is not what the inventory's layout says.
template <typename Read>
auto inColumn(const char* column, Read read) {
  try {
    return read();
  } catch (const std::range_error& failure) {
    throw std::runtime_error(std::string("column ") + column + ": " + failure.what());
  }
}

std::int64_t integer(const CCursorTable& row, const char* column, std::int64_t maximum) {
  return inColumn(column, [&] { return row[column].asInteger(0, maximum); });
}

int signedInteger(const CCursorTable& row, const char* column) {
  return inColumn(column,
                  [&] { return static_cast<int>(row[column].asInteger(INT32_MIN, INT32_MAX)); });
}

std::string text(const CCursorTable& row, const char* column) {
  return inColumn(column, [&] { return row[column].asText(); });
}

refl::CValue idValue(unsigned int id) { return refl::CValue(std::int64_t{id}); }

stDevProperty deviceProperty(const CCursorTable& row) {
  stDevProperty device;
  device.devId = static_cast<std::uint32_t>(integer(row, "dev_id", kLargestDeviceId));
  try {
    device.devType = static_cast<std::uint16_t>(integer(row, "main_type", kLargestType));
    device.subType = static_cast<std::int32_t>(integer(row, "sub_type", kLargestType));
    device.ipAddress = text(row, "ip_address");
    device.devName = text(row, "name");
  } catch (const std::runtime_error& failure) {
    throw std::runtime_error("device " + std::to_string(device.devId) + ", " + failure.what());
  }
  return device;
}

std::string placeholders(std::size_t count) {
  std::string result;
  for (std::size_t i = 0; i < count; ++i) {
    result += (i == 0 ? ":id" : ", :id") + std::to_string(i);
  }
  return result;
}

std::vector<unsigned int> withoutRepetitions(const std::list<unsigned int>& ids) {
  std::vector<unsigned int> distinct(ids.begin(), ids.end());
  std::sort(distinct.begin(), distinct.end());
  distinct.erase(std::unique(distinct.begin(), distinct.end()), distinct.end());
  return distinct;
}

}  // namespace

std::list<stDevProperty> InventoryReader::deviceProperties(const std::list<unsigned int>& ids) {
  const std::vector<unsigned int> wanted = withoutRepetitions(ids);
  std::unordered_map<unsigned int, stDevProperty> found;
  for (std::size_t start = 0; start < wanted.size(); start += kIdsPerStatement) {
    const std::size_t count = std::min(kIdsPerStatement, wanted.size() - start);
    std::vector<refl::CValue> parameters;
    for (std::size_t i = start; i < start + count; ++i) parameters.push_back(idValue(wanted[i]));
    forEachRow(
        "SELECT dev_id, main_type, sub_type, ip_address, name FROM device WHERE dev_id IN (" +
            placeholders(count) + ")",
        parameters, [&found](const CCursorTable& row) {
          stDevProperty device = deviceProperty(row);
          found.emplace(device.devId, std::move(device));
        });
  }
  std::list<stDevProperty> result;
  for (const unsigned int id : ids) {
    auto device = found.extract(id);
    if (!device.empty()) result.push_back(std::move(device.mapped()));
  }
  return result;
}

std::optional<std::string> InventoryReader::versionName(unsigned int id) {
  std::optional<std::string> version;
  forEachRow("SELECT version_name FROM device WHERE dev_id = :id", {idValue(id)},
             [&version](const CCursorTable& row) { version = text(row, "version_name"); });
  return version;
}

std::optional<std::list<std::string>> InventoryReader::locationParts(unsigned int id) {
  std::optional<std::list<std::string>> parts;
  // A device without parts gives one row whose part is NULL.
  forEachRow(
      "SELECT l.part AS part FROM device d LEFT JOIN device_location l ON l.dev_id = d.dev_id "
      "WHERE d.dev_id = :id ORDER BY l.seq",
      {idValue(id)}, [&parts](const CCursorTable& row) {
        if (!parts) parts.emplace();
        if (!row["part"].isEmpty()) parts->push_back(text(row, "part"));
      });
  return parts;
}

ResourceProperties InventoryReader::resourceProperties(const std::set<int>& shortIds) {
  ResourceProperties result;
  for (auto id = shortIds.begin(); id != shortIds.end();) {
    std::vector<refl::CValue> elements;
    std::vector<refl::CValue> shorts;
    for (; id != shortIds.end() && shorts.size() < kIdsPerStatement; ++id) {
      // An element's compatible id ends in its device id.
      elements.push_back(idValue(static_cast<unsigned int>(*id)));
      shorts.emplace_back(std::int64_t{*id});
    }
    addElements(elements, result);
    addAttributes(shorts, result);
  }
  return result;
}

void InventoryReader::addElements(const std::vector<refl::CValue>& ids,
                                  ResourceProperties& result) {
  forEachRow("SELECT dev_id FROM device WHERE dev_id IN (" + placeholders(ids.size()) + ")", ids,
             [&result](const CCursorTable& row) {
               const auto id = static_cast<std::uint32_t>(integer(row, "dev_id", kLargestDeviceId));
               result.found.try_emplace(static_cast<int>(id));
             });
}

void InventoryReader::addAttributes(const std::vector<refl::CValue>& shortIds,
                                    ResourceProperties& result) {
  // By short id. An element comes before the resources below others that end in the same bits.
  std::map<int, std::int64_t> owners;
  for (const auto& element : result.found) {
    owners.emplace(element.first, static_cast<std::uint32_t>(element.first));
  }
  forEachRow("SELECT res_id, short_id, number, value FROM resource_attribute WHERE short_id IN (" +
                 placeholders(shortIds.size()) + ") ORDER BY res_id, number",
             shortIds, [&](const CCursorTable& row) {
               const int shortId = signedInteger(row, "short_id");
               const std::int64_t resource = integer(row, "res_id", kLargestResourceId);
               const std::int64_t owner = owners.try_emplace(shortId, resource).first->second;
               if (owner == resource) {
                 result.found[shortId].attributes.emplace_back(signedInteger(row, "number"),
                                                               text(row, "value"));
               } else if (owner > kLargestDeviceId) {
                 result.ambiguous.insert(shortId);
               }
             });
  for (const int shortId : result.ambiguous) result.found.erase(shortId);
}

std::list<NodeStruct> InventoryReader::allNodes() { return nodes("ORDER BY dev_id", {}); }

std::list<NodeStruct> InventoryReader::nodesById(const std::string& nodeId) {
  return nodes("WHERE node_id = :node", {refl::CValue(nodeId)});
}

std::list<NodeStruct> InventoryReader::nodes(const std::string& condition,
                                             const std::vector<refl::CValue>& parameters) {
  std::list<NodeStruct> result;
  forEachRow("SELECT dev_id, node_id, name FROM device " + condition, parameters,
             [&result](const CCursorTable& row) {
               NodeStruct node;
               node.devId = static_cast<std::uint32_t>(integer(row, "dev_id", kLargestDeviceId));
               node.nodeId = text(row, "node_id");
               node.label = text(row, "name");
               result.push_back(std::move(node));
             });
  return result;
}

void InventoryReader::forEachRow(const std::string& statement,
                                 const std::vector<refl::CValue>& parameters,
                                 const std::function<void(const CCursorTable&)>& use) {
  SessionPool::Lease lease(sessions_);
  CCursorTable rows;  // behind the lease: no statement may be open on a session in the pool
  rows.Open(lease.session(), statement, parameters);
  while (rows.FetchNextRow()) use(rows);
  if (!rows.GetStatus().IsOk()) throw std::runtime_error(rows.GetStatus().GetMessage());
}

}  // namespace dao
