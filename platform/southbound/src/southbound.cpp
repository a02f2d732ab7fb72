#include "orma/southbound/southbound.h"

#include <algorithm>
#include <charconv>
#include <functional>
#include <map>
#include <optional>
#include <stdexcept>
#include <string_view>
#include <tuple>
#include <unordered_map>
#include <utility>

#include "orma/dao/cursor_table.h"
#include "orma/dao/session_pool.h"
#include "orma/ident/port_index.h"

namespace NS_DOMAIN_SOUTHAPISET {
namespace {

// The code of a ProcessException: the inventory could not be read.
constexpr int kInventoryReadFailed = 0x411800BA;
constexpr int kNoSuchPort = 0x411800CC;

enum AttributeBit : int { kNameBit = 0x001, kAttributeBit = 0x002, kPortsBit = 0x004 };

struct LinkKind {
  std::int32_t kind;
  std::string_view resType;
};

constexpr LinkKind kLinkKinds[] = {{0, "VLINK"}, {105, "L2LINK"}, {204, "IPLINK"}};

dao::SessionPool& sessions() {
  // Never destroyed: a thread may still be reading while the process ends.
  static auto* const pool = new dao::SessionPool;
  return *pool;
}

[[noreturn]] void fail(const char* operation, int line, const std::string& reason) {
  ProcessException failure;
  failure.errCode = kInventoryReadFailed;
  failure.line = line;
  failure.file << "southbound";
  failure.function << operation;
  failure.detail << reason;
  throw failure;
}

// Runs one statement; what the inventory cannot answer, or answers with values that are none of
// its layout's, is a failure of the operation.
void forEachRow(const char* operation, const std::string& statement,
                const std::function<void(const dao::CCursorTable&)>& use) {
  std::string reason;
  try {
    dao::SessionPool::Lease lease(sessions());
    dao::CCursorTable rows;
    rows.Open(lease.session(), statement);
    while (rows.FetchNextRow()) use(rows);
    if (rows.GetStatus().IsOk()) return;
    reason = rows.GetStatus().GetMessage();
  } catch (const std::range_error& value) {
    reason = value.what();
  }
  fail(operation, __LINE__, reason);
}

std::int32_t number(const dao::CCursorTable& row, const char* column) {
  return static_cast<std::int32_t>(row[column].asInteger(INT32_MIN, INT32_MAX));
}

// The numbers of a list as it stands in a statement; numbers need no binding.
template <typename Number>
std::string joined(const std::vector<Number>& numbers) {
  std::string text;
  for (const Number value : numbers) {
    if (!text.empty()) text += ',';
    text += std::to_string(value);
  }
  return text;
}

std::string linkResId(std::int32_t kind, std::int64_t id, std::string_view resType) {
  return std::string(resType) + '=' + std::to_string(kind) + ':' + std::to_string(id);
}

std::string_view resTypeOf(std::int32_t kind) {
  const auto* row = std::find_if(std::begin(kLinkKinds), std::end(kLinkKinds),
                                 [kind](const LinkKind& known) { return known.kind == kind; });
  return row == std::end(kLinkKinds) ? std::string_view("IPLINK") : row->resType;
}

struct LinkKey {
  std::int64_t id;
  std::string_view resType;
};

// "IPLINK=204:77" or "IPLINK=77"; nothing when there is no number at its end.
std::optional<LinkKey> parseLinkResId(std::string_view text) {
  const std::size_t equals = text.find('=');
  if (equals == std::string_view::npos) return std::nullopt;
  const std::size_t start = text.find_last_of("=:") + 1;
  LinkKey key{0, text.substr(0, equals)};
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data() + start, end, key.id);
  if (error != std::errc() || stop != end) return std::nullopt;
  return key;
}

std::string portResId(const dao::CCursorTable& row, const std::string& end) {
  NS_DOMAIN::PortIndex port;
  port.neID = number(row, (end + "_dev").c_str());
  port.shelfID = number(row, (end + "_frame").c_str());
  port.slotID = number(row, (end + "_slot").c_str());
  port.subSlotID = number(row, (end + "_card").c_str());
  port.portID = number(row, (end + "_port").c_str());
  port.type = number(row, (end + "_type").c_str());
  port.portName = row[end + "_name"].asText();
  std::string id;
  NS_UTIL::ResIDUtil::PortIndex2ResID(port, id, false);
  return id;
}

std::string endColumns(const std::string& end) {
  std::string columns;
  for (const auto& [column, alias] : {std::pair<const char*, const char*>{"dev_id", "_dev"},
                                      {"frame", "_frame"},
                                      {"slot", "_slot"},
                                      {"card", "_card"},
                                      {"port", "_port"},
                                      {"type", "_type"},
                                      {"name", "_name"}}) {
    columns.append(", ").append(end).append(".").append(column);
    columns.append(" AS ").append(end).append(alias);
  }
  return columns;
}

std::string linkStatement(const std::vector<std::int64_t>& ids) {
  static const std::string kColumns = endColumns("a") + endColumns("z");
  return "SELECT l.link_id, l.kind, l.name, l.attribute" + kColumns +
         " FROM link l JOIN port a ON a.port_id = l.a_port JOIN port z ON z.port_id = l.z_port"
         " WHERE l.link_id IN (" +
         joined(ids) + ")";
}

TELinkInfo linkInfo(const dao::CCursorTable& row, int mask) {
  TELinkInfo info;
  const std::int32_t kind = number(row, "kind");
  info.linkResId = linkResId(kind, row["link_id"].asInteger(), resTypeOf(kind));
  if ((mask & kNameBit) != 0) info.linkName = row["name"].asText();
  if ((mask & kAttributeBit) != 0) info.linkAttribute = number(row, "attribute");
  if ((mask & kPortsBit) != 0) {
    info.srcPortResId = portResId(row, "a");
    info.dstPortResId = portResId(row, "z");
  }
  return info;
}

using PortPlace = std::tuple<std::int32_t, std::int32_t, std::int32_t, std::int32_t, std::int32_t>;

PortPlace placeOf(const std::string& resourceId) {
  NS_DOMAIN::PortIndex port;
  NS_UTIL::ResIDUtil::ResID2PortIndex(resourceId, port);
  return {port.neID, port.shelfID, port.slotID, port.subSlotID, port.portID};
}

std::string placeText(const PortPlace& place) {
  const auto [device, frame, slot, card, port] = place;
  return '(' + joined(std::vector<std::int32_t>{device, frame, slot, card, port}) + ')';
}

}  // namespace

void GetLinkID(const std::vector<int>& elements, const std::vector<int>& kinds,
               std::vector<TEUniResID>& out) {
  std::string statement = "SELECT l.link_id, l.kind FROM link l";
  std::string condition;
  if (!elements.empty()) {
    statement += " JOIN port a ON a.port_id = l.a_port JOIN port z ON z.port_id = l.z_port";
    const std::string list = joined(elements);
    condition = " WHERE a.dev_id IN (" + list + ") AND z.dev_id IN (" + list + ")";
  }
  if (!kinds.empty()) {
    condition += (condition.empty() ? " WHERE" : " AND");
    condition += " l.kind IN (" + joined(kinds) + ")";
  }
  std::vector<TEUniResID> found;
  forEachRow("GetLinkID", statement + condition + " ORDER BY l.link_id",
             [&found](const dao::CCursorTable& row) {
               const std::int32_t kind = number(row, "kind");
               TEUniResID id;
               id.resType = std::string(resTypeOf(kind));
               id.uniResId = linkResId(kind, row["link_id"].asInteger(), id.resType);
               found.push_back(std::move(id));
             });
  std::move(found.begin(), found.end(), std::back_inserter(out));
}

void GetLinkInfo(const std::vector<TEUniResID>& ids, const int& mask,
                 std::vector<TELinkInfo>& out) {
  std::vector<std::int64_t> wanted;
  for (const TEUniResID& id : ids) {
    if (const auto key = parseLinkResId(id.uniResId)) wanted.push_back(key->id);
  }
  if (wanted.empty()) return;
  struct Found {
    std::string_view resType;
    TELinkInfo info;
  };
  std::unordered_map<std::int64_t, Found> found;
  forEachRow("GetLinkInfo", linkStatement(wanted), [&found, mask](const dao::CCursorTable& row) {
    found[row["link_id"].asInteger()] = {resTypeOf(number(row, "kind")), linkInfo(row, mask)};
  });
  for (const TEUniResID& id : ids) {
    const auto key = parseLinkResId(id.uniResId);
    const auto link = key ? found.find(key->id) : found.end();
    if (link != found.end() && link->second.resType == key->resType) {
      out.push_back(link->second.info);
    }
  }
}

void GetPortStatus(const std::vector<TEUniResID>& ids, TEErrInfoReturn& errors,
                   std::vector<TEPortOAMStatus>& out) {
  errors.number = 0;
  if (ids.empty()) return;
  std::string places;
  for (const TEUniResID& id : ids) {
    places.append(places.empty() ? "" : ",").append(placeText(placeOf(id.uniResId)));
  }
  std::map<PortPlace, std::pair<std::int32_t, std::int32_t>> states;
  forEachRow("GetPortStatus",
             "SELECT dev_id, frame, slot, card, port, state_a, state_b FROM port "
             "WHERE (dev_id, frame, slot, card, port) IN (VALUES " +
                 places + ")",
             [&states](const dao::CCursorTable& row) {
               states[{number(row, "dev_id"), number(row, "frame"), number(row, "slot"),
                       number(row, "card"), number(row, "port")}] = {number(row, "state_a"),
                                                                     number(row, "state_b")};
             });
  for (const TEUniResID& id : ids) {
    const auto state = states.find(placeOf(id.uniResId));
    if (state == states.end()) {
      errors.entries.push_back({id.uniResId, kNoSuchPort});
      ++errors.number;
    } else {
      out.push_back({id.uniResId, state->second.first, state->second.second});
    }
  }
}

}  // namespace NS_DOMAIN_SOUTHAPISET
