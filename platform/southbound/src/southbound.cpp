#include "orma/southbound/southbound.h"

#include <array>
#include <map>
#include <optional>
#include <stdexcept>
#include <unordered_map>
#include <utility>

#include "inventory_read.h"
#include "link_ids.h"
#include "orma/ident/port_index.h"

namespace NS_DOMAIN_SOUTHAPISET {
namespace {

using dao::CCursorTable;
using NS_DOMAIN::PortIndex;
using orma::southbound::KeyedStatement;
using orma::southbound::linkResId;
using orma::southbound::number;
using orma::southbound::parseLinkResId;
using orma::southbound::resTypeOf;

// The code of a port in the list of errors.
constexpr int kNoSuchPort = 0x411800CC;

// The bits of the mask; the others select nothing.
enum AttributeBit : int { kNameBit = 0x001, kAttributeBit = 0x002, kPortsBit = 0x004 };

// The columns of a row of a link, and of one of a port behind its place.
enum LinkColumn : unsigned long { kLink, kKind, kName, kAttribute, kSourcePort, kDestPort = 11 };
enum StateColumn : unsigned long { kFirstState = 5, kSecondState };

const KeyedStatement& linkStatement() {
  static const auto* const statement = new KeyedStatement(
      "GetLinkInfo",
      "SELECT l.link_id, l.kind, l.name, l.attribute,"
      " a.dev_id, a.frame, a.slot, a.card, a.port, a.type, a.name,"
      " z.dev_id, z.frame, z.slot, z.card, z.port, z.type, z.name"
      " FROM link l JOIN port a ON a.port_id = l.a_port JOIN port z ON z.port_id = l.z_port"
      " WHERE l.link_id IN (",
      "?", "?");
  return *statement;
}

// The casts of the first key tell the server what the numbers of all are.
const KeyedStatement& stateStatement() {
  static const auto* const statement = new KeyedStatement(
      "GetPortStatus",
      "SELECT dev_id, frame, slot, card, port, state_a, state_b FROM port"
      " WHERE (dev_id, frame, slot, card, port) IN (VALUES ",
      "(CAST(? AS BIGINT), CAST(? AS BIGINT), CAST(? AS BIGINT), CAST(? AS BIGINT),"
      " CAST(? AS BIGINT))",
      "(?, ?, ?, ?, ?)");
  return *statement;
}

// Devices are numbered up to 2^32 - 1; the coordinates hold their 32-bit pattern.
std::int32_t deviceNumber(const CCursorTable& row, unsigned long column) {
  return static_cast<std::int32_t>(row[column].asInteger(0, UINT32_MAX));
}

std::string portResId(const CCursorTable& row, unsigned long firstColumn) {
  PortIndex port;
  port.neID = deviceNumber(row, firstColumn);
  port.shelfID = number(row, firstColumn + 1);
  port.slotID = number(row, firstColumn + 2);
  port.subSlotID = number(row, firstColumn + 3);
  port.portID = number(row, firstColumn + 4);
  port.type = number(row, firstColumn + 5);
  port.portName = row[firstColumn + 6].asText();
  std::string id;
  NS_UTIL::ResIDUtil::PortIndex2ResID(port, id, false);
  return id;
}

TELinkInfo linkInfo(const CCursorTable& row, std::int32_t kind, int mask) {
  TELinkInfo info;
  info.linkResId = linkResId(kind, row[kLink].asInteger());
  if ((mask & kNameBit) != 0) info.linkName = row[kName].asText();
  if ((mask & kAttributeBit) != 0) info.linkAttribute = number(row, kAttribute);
  if ((mask & kPortsBit) != 0) {
    info.srcPortResId = portResId(row, kSourcePort);
    info.dstPortResId = portResId(row, kDestPort);
  }
  return info;
}

// Runs `read`; a value that is none of the layout's is told with the record that holds it.
template <typename Read>
void within(const char* record, std::int64_t id, Read read) {
  try {
    read();
  } catch (const std::range_error& failure) {
    throw std::range_error(std::string(record) + " " + std::to_string(id) + ": " + failure.what());
  }
}

// Device, frame, slot, card and port.
using PortPlace = std::array<std::int64_t, 5>;

// Nothing when the id names no device.
std::optional<PortPlace> placeOf(const std::string& resourceId) {
  PortIndex port;
  NS_UTIL::ResIDUtil::ResID2PortIndex(resourceId, port);
  if (port.neID == -1) return std::nullopt;
  return PortPlace{static_cast<std::uint32_t>(port.neID), port.shelfID, port.slotID, port.subSlotID,
                   port.portID};
}

PortPlace placeOf(const CCursorTable& row) {
  PortPlace place{};
  for (std::size_t column = 0; column < place.size(); ++column) {
    place[column] = row[column].asInteger();
  }
  return place;
}

struct PortState {
  std::int32_t first;
  std::int32_t second;
};

// Numbers as they stand in a statement.
template <typename Number>
std::string joined(const std::vector<int>& numbers) {
  std::string text;
  for (const int value : numbers) {
    if (!text.empty()) text += ',';
    text += std::to_string(static_cast<Number>(value));
  }
  return text;
}

std::string linkIdStatement(const std::vector<int>& elements, const std::vector<int>& kinds) {
  std::string statement = "SELECT l.link_id, l.kind FROM link l";
  std::string condition;
  if (!elements.empty()) {
    statement += " JOIN port a ON a.port_id = l.a_port JOIN port z ON z.port_id = l.z_port";
    const std::string list = joined<std::uint32_t>(elements);
    condition = " WHERE a.dev_id IN (" + list + ") AND z.dev_id IN (" + list + ")";
  }
  if (!kinds.empty()) {
    condition.append(condition.empty() ? " WHERE" : " AND");
    condition.append(" l.kind IN (").append(joined<std::int32_t>(kinds)).append(")");
  }
  return statement + condition + " ORDER BY l.link_id";
}

}  // namespace

void GetLinkID(const std::vector<int>& elements, const std::vector<int>& kinds,
               std::vector<TEUniResID>& out) {
  std::vector<TEUniResID> found;
  orma::southbound::readRows("GetLinkID", linkIdStatement(elements, kinds), {},
                             [&found](const CCursorTable& row) {
                               const std::int64_t link = row[kLink].asInteger();
                               within("link", link, [&] {
                                 const std::int32_t kind = number(row, kKind);
                                 TEUniResID id;
                                 id.resType = resTypeOf(kind);
                                 id.uniResId = linkResId(kind, link);
                                 found.push_back(std::move(id));
                               });
                             });
  std::move(found.begin(), found.end(), std::back_inserter(out));
}

void GetLinkInfo(const std::vector<TEUniResID>& ids, const int& mask,
                 std::vector<TELinkInfo>& out) {
  std::vector<std::int64_t> wanted;
  for (const TEUniResID& id : ids) {
    if (const auto key = parseLinkResId(id.uniResId)) wanted.push_back(key->link);
  }
  struct Found {
    std::string_view resType;
    TELinkInfo info;
  };
  std::unordered_map<std::int64_t, Found> found;
  linkStatement().readRows(wanted, [&found, mask](const CCursorTable& row) {
    const std::int64_t link = row[kLink].asInteger();
    within("link", link, [&] {
      const std::int32_t kind = number(row, kKind);
      found[link] = {resTypeOf(kind), linkInfo(row, kind, mask)};
    });
  });
  for (const TEUniResID& id : ids) {
    const auto key = parseLinkResId(id.uniResId);
    const auto link = key ? found.find(key->link) : found.end();
    if (link != found.end() && link->second.resType == key->resType) {
      out.push_back(link->second.info);
    }
  }
}

void GetPortStatus(const std::vector<TEUniResID>& ids, TEErrInfoReturn& errors,
                   std::vector<TEPortOAMStatus>& out) {
  std::vector<std::optional<PortPlace>> places;
  std::vector<std::int64_t> keys;
  for (const TEUniResID& id : ids) {
    places.push_back(placeOf(id.uniResId));
    if (places.back()) keys.insert(keys.end(), places.back()->begin(), places.back()->end());
  }
  std::map<PortPlace, PortState> states;
  stateStatement().readRows(keys, [&states](const CCursorTable& row) {
    const PortPlace place = placeOf(row);
    within("a port of device", place[0], [&] {
      states[place] = {number(row, kFirstState), number(row, kSecondState)};
    });
  });
  errors.number = 0;
  for (std::size_t i = 0; i < ids.size(); ++i) {
    const auto state = places[i] ? states.find(*places[i]) : states.end();
    if (state == states.end()) {
      errors.entries.push_back({ids[i].uniResId, kNoSuchPort});
      ++errors.number;
    } else {
      out.push_back({ids[i].uniResId, state->second.first, state->second.second});
    }
  }
}

}  // namespace NS_DOMAIN_SOUTHAPISET
