#include "network.h"

#include <algorithm>

#include "resource_ids.h"

namespace soak {

using systemtest::idOf;
using systemtest::iidOf;
using systemtest::pathOf;

namespace {

constexpr char kDeviceRow[] =
    "dev_id || '|' || main_type || '|' || sub_type || '|' || ip_address || '|' || name";

// A node's row; what stands for the icon differs.
std::string nodeRow(const std::string& icon) {
  return "'S' || subnet_id || '|' || node_id || '|' || dev_id || '|' || " + icon +
         " || '|' || substr(ex_info, 10, instr(ex_info, ';ProcID=') - 10) || '|' || name || '|' || "
         "ip_address || '|' || remark || '|' || "
         "CAST(substr(ex_info, instr(ex_info, 'ProcID=') + 7) AS INTEGER) || '|2011|0|' || "
         "CASE WHEN node_class = 'container' THEN 255 WHEN ex_info LIKE '%MainNode%' THEN 254 "
         "ELSE 0 END || '|' || pos_x || '|' || pos_y || '|' || topo_id";
}

// Names of the subnets from the root down to each.
constexpr char kPaths[] =
    "WITH RECURSIVE path (obj_id, text) AS (SELECT obj_id, label FROM subnet WHERE obj_id = "
    "parent_id UNION ALL SELECT s.obj_id, p.text || '/' || s.label FROM subnet s JOIN path p ON "
    "s.parent_id = p.obj_id AND s.obj_id <> s.parent_id) ";

constexpr char kSubMapRow[] =
    "CASE parent_id WHEN '102' THEN 'ORMAP_PHY_SUBMAP' ELSE 'S' || parent_id END || '|' || "
    "CASE WHEN obj_id = parent_id THEN 'ORMAP_PHY_SUBMAP' ELSE 'S' || obj_id END || '|' || "
    "label || '|' || icon_file || '|' || CASE WHEN obj_id = parent_id THEN topo_id WHEN type_id = "
    "200 THEN 1 ELSE type_id END || '|0|' || topo_class_id || '|0|' || "
    "CASE WHEN instr(ex_info, 'ProcID ') = 0 THEN 0 ELSE "
    "CAST(substr(ex_info, instr(ex_info, 'ProcID ') + 7) AS INTEGER) END || '|' || "
    "pos_x || '|' || pos_y";

constexpr char kStatus[] =
    "CASE WHEN #.state_a < 0 OR #.state_b < 0 THEN -1 WHEN #.state_a = 1 AND #.state_b = 1 THEN 1 "
    "WHEN #.state_a = 1 AND #.state_b = 0 THEN 9 WHEN #.state_a = 0 AND #.state_b = 0 THEN 8 "
    "ELSE 2 END";

std::string statusOf(char port) {
  std::string text = kStatus;
  std::replace(text.begin(), text.end(), '#', port);
  return text;
}

// The first column of each row.
Rows firstColumn(const systemtest::Rows& table) {
  Rows rows;
  rows.reserve(table.size());
  for (const auto& row : table) rows.push_back(row.at(0));
  return rows;
}

SharedRows list(systemtest::Inventory& inventory, const std::string& statement) {
  return std::make_shared<const Rows>(firstColumn(inventory.rows(statement)));
}

SharedRows with(const SharedRows& rows, std::size_t position, const std::string& row) {
  Rows more = *rows;
  more.insert(more.begin() + static_cast<std::ptrdiff_t>(std::min(position, more.size())), row);
  return std::make_shared<const Rows>(std::move(more));
}

}  // namespace

Network::Network(const std::filesystem::path& file) {
  systemtest::Inventory inventory(file);
  readElements(inventory);
  readSubMaps(inventory);
  readEquipment(inventory);
  readLinks(inventory);
  readLists(inventory);
}

void Network::readElements(Inventory& inventory) {
  const std::string location =
      "coalesce((SELECT group_concat(part || '  ', '') FROM (SELECT part FROM device_location l "
      "WHERE l.dev_id = d.dev_id ORDER BY seq)), '')";
  for (const auto& row : inventory.rows(
           kPaths + ("SELECT dev_id, node_id, name, version_name, " + location + ", " + kDeviceRow +
                     ", " + nodeRow("icon_file") +
                     ", CASE origin WHEN 1 THEN (SELECT text FROM path p WHERE p.obj_id = "
                     "d.subnet_id) ELSE '' END FROM device d ORDER BY dev_id"))) {
    elements.push_back(
        {std::stoll(row[0]), row[1], row[2], row[3], row[4], row[5], row[6], row[7]});
  }
}

void Network::readSubMaps(Inventory& inventory) {
  for (const auto& row : inventory.rows(std::string("SELECT obj_id, ") + kSubMapRow +
                                        " FROM subnet ORDER BY topo_id")) {
    const SharedRows children =
        list(inventory, std::string("SELECT ") + kSubMapRow + " FROM subnet WHERE parent_id = '" +
                            row[0] + "' AND obj_id <> parent_id ORDER BY topo_id");
    subMaps.push_back({"S" + row[0], row[1], children});
  }
  roots = std::make_shared<const Rows>(Rows{subMaps.front().row});
}

void Network::readEquipment(Inventory& inventory) {
  for (const auto& row : inventory.rows(
           "SELECT dev_id, country || '|' || province || '|' || city || '|' || address, "
           "coalesce((SELECT k.keeper_id || '|' || name || '|' || dept || '|' || phone_no || '|' "
           "|| email FROM keeper k JOIN device_keeper d USING (keeper_id) WHERE d.dev_id = "
           "p.dev_id ORDER BY seq LIMIT 1), '0||||') FROM device_place p ORDER BY dev_id")) {
    EquippedElement element{std::stoll(row[0]), row[1], row[2], {}, {}};
    element.attributes = firstColumn(inventory.rows(
        "SELECT number || '|' || value FROM resource_attribute WHERE res_id = " + row[0] +
        " AND number <> 30 AND number NOT BETWEEN 60 AND 63 ORDER BY number"));
    readContents(inventory, element);
    equipped.push_back(std::move(element));
  }
}

void Network::readContents(Inventory& inventory, EquippedElement& element) {
  for (const auto& row :
       inventory.rows("SELECT main_type, sub_type, native_id, name FROM resource WHERE dev_id = " +
                      std::to_string(element.id) + " ORDER BY seq")) {
    Content content{std::stoll(row[0]), std::stoll(row[1]), row[2], row[3], pathOf(row[2]), ""};
    content.row = content.path + "|" + std::to_string(iidOf(idOf(content.dn))) + "|" + row[3] +
                  "|" + row[0] + "|" + row[1];
    element.contents.push_back(std::move(content));
  }
}

void Network::readLinks(Inventory& inventory) {
  for (const auto& row : inventory.rows(
           "SELECT kind || ':' || link_id, kind || ':' || link_id || '|' || l.name || '|' || "
           "a.dev_id || '|' || a.name || '|' || z.dev_id || '|' || z.name || '|' || attribute || "
           "'|0|' || a.type || '|0|' || z.type, " +
           statusOf('a') + ", " + statusOf('z') +
           " FROM link l JOIN port a ON a.port_id = l.a_port JOIN port z ON z.port_id = l.z_port "
           "ORDER BY link_id")) {
    links.push_back({row[0], row[1], std::stoll(row[2]), std::stoll(row[3])});
  }
  for (const LinkFacts& link : links) linkById[link.id] = &link;
}

void Network::readLists(Inventory& inventory) {
  devices = list(inventory, std::string("SELECT ") + kDeviceRow + " FROM device ORDER BY dev_id");
  rootNodes = with(
      list(inventory, "SELECT " +
                          nodeRow("replace(replace(icon_file, '/images/topo/', ''), '.png', '')") +
                          " FROM device WHERE subnet_id = '102' ORDER BY dev_id"),
      0, "S102|1|1||OS|OS|||1|2011|0|0|0|0|100");
  labels = list(inventory,
                "SELECT text FROM (SELECT native_id AS fdn, native_id || '|' || name AS text FROM "
                "device UNION ALL SELECT 'OS=1', 'OS=1|OS') ORDER BY fdn");
  managedElements = list(inventory,
                         "SELECT dev_id || '|' || (dev_id + (1 << 60)) || '|' || name || '|1|' || "
                         "(main_type * 65536 + sub_type) FROM device ORDER BY dev_id");
  managed = with(managedElements, 0, "1|2|OSS|1|0");
  mainTypes = list(inventory, "SELECT type_id || '|' || name FROM main_type ORDER BY type_id");
  const SharedRows catalogue =
      list(inventory,
           "SELECT group_id || '|' || alarm_id || '|' || event_type || '|' || severity || '|0|' || "
           "name || '|' || description FROM alarm_definition ORDER BY seq");
  definitions = with(catalogue, catalogue->size(), "-999|-999|0|0|0||");
  const SharedRows causes =
      list(inventory,
           "SELECT group_id || '|' || alarm_id || '|' || reason_id || '|' || causes || '|' || "
           "repair_action FROM alarm_reason ORDER BY seq");
  reasons = with(causes, causes->size(), "-999|-999|-999||");
  redefined =
      list(inventory,
           "SELECT group_id || '|' || alarm_id || '|0|' || new_severity || '|' || "
           "old_severity || '|' || name || '|' FROM redefined_alarm ORDER BY seq LIMIT 500");
}

}  // namespace soak
