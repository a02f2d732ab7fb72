#include "topology_objects.h"

#include <algorithm>
#include <charconv>
#include <iterator>

#include "json_writer.h"

namespace ormasim {
namespace {

// Where the objects of one kind come from. The select gives the number in the order, then the
// members in the order of kMembers; the columns are what a filter compares.
struct Kind {
  const char* nodeClasses[2];  // all that its objects have; null: none
  const char* select;
  const char* number;
  const char* columns[5];  // by TopologyAttribute
};

// A type is a signed 32-bit number on the wire: main types above 32767 come out negative.
constexpr Kind kKinds[] = {
    {{"ne", nullptr},
     "SELECT 1, 'ne', '1', '102', 'OS=1', 'OS', '', 'NodeType=OS;ProcID=1', '', '',"
     " 0, 0, 100, 0, 0, 0 FROM (SELECT 1)",
     "1",
     {"'ne'", "'1'", "'102'", "'OS=1'", "100"}},
    {{"subnet", nullptr},
     "SELECT topo_id, 'subnet', obj_id, parent_id, native_id, label, icon_file, ex_info, '', '',"
     " pos_x, pos_y, topo_id, type_id, topo_class_id, 0 FROM subnet",
     "topo_id",
     {"'subnet'", "obj_id", "parent_id", "native_id", "topo_id"}},
    {{"ne", "container"},
     "SELECT dev_id, node_class, 'D' || dev_id, subnet_id, native_id, name, icon_file, ex_info,"
     " ip_address, remark, pos_x, pos_y, topo_id,"
     " (main_type * 65536 + sub_type + 2147483648) % 4294967296 - 2147483648, 0, origin"
     " FROM device",
     "dev_id",
     {"node_class", "('D' || dev_id)", "subnet_id", "native_id", "topo_id"}},
};

struct Member {
  const char* name;
  bool number;
};

constexpr Member kMembers[] = {
    {"nodeClass", false}, {"objId", false},      {"parentId", false}, {"nativeId", false},
    {"label", false},     {"iconFile", false},   {"exInfo", false},   {"ipAddr", false},
    {"remark", false},    {"posX", true},        {"posY", true},      {"topoId", true},
    {"typeId", true},     {"topoClassId", true}, {"origin", true},
};

std::string conditionOn(const char* column, const TopologyExpression& expression) {
  std::string text = std::string(" AND ") + column;
  if (!expression.caseSensitive) text += " COLLATE NOCASE";
  text += " IN (";
  for (std::size_t i = 0; i < expression.anyOf.size(); ++i) text += i == 0 ? "?" : ",?";
  return text + ")";
}

// Whether objects of the kind can be of the node classes that are asked for. Left to the database,
// a request for subnets would read through all elements.
bool mayHold(const Kind& kind, const TopologyExpression& expression) {
  if (expression.attribute != TopologyAttribute::NodeClass) return true;
  const auto asksFor = [&expression](const char* nodeClass) {
    if (nodeClass == nullptr) return false;
    const auto same = [&](const std::string& text) {
      return expression.caseSensitive ? text == nodeClass
                                      : sqlite3_stricmp(text.c_str(), nodeClass) == 0;
    };
    return std::any_of(expression.anyOf.begin(), expression.anyOf.end(),
                       [&](const auto& value) { return same(std::get<std::string>(value)); });
  };
  return std::any_of(std::begin(kind.nodeClasses), std::end(kind.nodeClasses), asksFor);
}

bool mayHold(const Kind& kind, const TopologyFilter& filter) {
  const auto& all = filter.expressions();
  return std::all_of(all.begin(), all.end(),
                     [&kind](const TopologyExpression& one) { return mayHold(kind, one); });
}

std::string statementFor(const Kind& kind, const TopologyFilter& filter) {
  std::string text = std::string(kind.select) + " WHERE " + kind.number + " > ?";
  for (const TopologyExpression& expression : filter.expressions()) {
    text += conditionOn(kind.columns[static_cast<int>(expression.attribute)], expression);
  }
  return text + " ORDER BY 1";
}

void bindFilter(Statement& statement, const TopologyFilter& filter, std::int64_t after) {
  int index = 0;
  statement.bind(++index, after);
  for (const TopologyExpression& expression : filter.expressions()) {
    for (const auto& value : expression.anyOf) {
      if (const auto* text = std::get_if<std::string>(&value)) {
        statement.bind(++index, std::string_view(*text));
      } else {
        statement.bind(++index, std::get<std::int64_t>(value));
      }
    }
  }
}

void appendObject(std::string& out, const Statement& row) {
  out += out.back() != '[' ? ",{" : "{";
  int column = 0;
  for (const Member& member : kMembers) {
    if (column++ != 0) out += ',';
    if (member.number) {
      appendMember(out, member.name, row.integer(column));
    } else {
      appendMember(out, member.name, row.text(column));
    }
  }
  out += '}';
}

}  // namespace

std::string markerFor(const TopologyPosition& position) {
  return "t" + std::to_string(position.kind) + "-" + std::to_string(position.number);
}

std::optional<TopologyPosition> topologyPositionOf(const std::string& marker) {
  TopologyPosition position;
  const char* const end = marker.data() + marker.size();
  if (marker.size() < 4) return std::nullopt;
  const auto kind = std::from_chars(marker.data() + 1, end, position.kind);
  if (kind.ec != std::errc() || kind.ptr == end) return std::nullopt;
  const auto number = std::from_chars(kind.ptr + 1, end, position.number);
  const bool known = number.ec == std::errc() && position.number >= 0 && position.kind >= 0 &&
                     position.kind < static_cast<std::int64_t>(std::size(kKinds));
  // Anything that would not be written so again does not come from here.
  if (!known || markerFor(position) != marker) return std::nullopt;
  return position;
}

TopologyPage TopologyObjects::appendPage(const TopologyFilter& filter,
                                         const TopologyPosition& after, std::int64_t limit,
                                         std::string& out) {
  TopologyPage page;
  page.last = after;
  out += '[';
  // All kinds are read in one state of the database.
  Transaction transaction(database_);
  std::int64_t left = limit;
  for (std::int64_t kind = after.kind;
       kind < static_cast<std::int64_t>(std::size(kKinds)) && !page.more; ++kind) {
    if (!mayHold(kKinds[kind], filter)) continue;
    Statement rows(database_, statementFor(kKinds[kind], filter));
    bindFilter(rows, filter, kind == after.kind ? after.number : -1);
    while (rows.step()) {
      if (left == 0) {
        page.more = true;
        break;
      }
      --left;
      page.last = {kind, rows.integer(0)};
      appendObject(out, rows);
    }
  }
  out += ']';
  transaction.commit();
  return page;
}

}  // namespace ormasim
