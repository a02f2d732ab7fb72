#include "port_status.h"

#include <charconv>
#include <string_view>

#include "error.h"
#include "json_writer.h"

namespace ormasim {
namespace {

// As many whole numbers as there are elements, with one separator between any two.
template <typename Numbers>
bool readNumbers(std::string_view text, char separator, Numbers& numbers) {
  const char* at = text.data();
  const char* const end = at + text.size();
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    if (i > 0 && (at == end || *at++ != separator)) return false;
    const auto result = std::from_chars(at, end, numbers[i]);
    if (result.ec != std::errc()) return false;
    at = result.ptr;
  }
  return at == end;
}

std::string placeText(const PortPlace& place) {
  std::string text;
  for (const std::int64_t number : place) {
    text += (text.empty() ? "" : "/") + std::to_string(number);
  }
  return text;
}

std::int64_t idAt(Database& database, const PortPlace& place) {
  Statement port(database,
                 "SELECT port_id FROM port WHERE (dev_id, frame, slot, card, port) = (?,?,?,?,?)");
  port.bindAll(place[0], place[1], place[2], place[3], place[4]);
  if (port.step()) return port.integer(0);
  Statement device(database, "SELECT 1 FROM device WHERE dev_id = ?");
  device.bindAll(place[0]);
  throw SimError("there is no port " + placeText(place) + " in " + database.file() +
                 (device.step() ? "; device " + std::to_string(place[0]) + " has none at that place"
                                : "; there is no device " + std::to_string(place[0])));
}

void setStates(Database& database, std::int64_t id, const PortStates& states) {
  Statement change(database, "UPDATE port SET state_a = ?, state_b = ? WHERE port_id = ?");
  change.run(std::int64_t{states[0]}, std::int64_t{states[1]}, id);
}

void appendPort(Database& database, std::int64_t id, std::string& out) {
  Statement row(database,
                "SELECT dev_id, frame, slot, card, port, name, state_a, state_b FROM port "
                "WHERE port_id = ?");
  row.bindAll(id);
  if (!row.step()) {
    throw SimError("there is no port " + std::to_string(id) + " in " + database.file() +
                   "; its ids stand in table port");
  }
  PortPlace place;
  for (std::size_t i = 0; i < place.size(); ++i) place[i] = row.integer(static_cast<int>(i));
  appendMember(out, "portId", id);
  out += ',';
  appendMember(out, "place", placeText(place));
  out += ',';
  appendMember(out, "name", row.text(5));
  out += ",\"states\":[";
  appendJsonNumber(out, row.integer(6));
  out += ',';
  appendJsonNumber(out, row.integer(7));
  out += ']';
}

// Links are named as the agent names them.
void appendLinks(Database& database, std::int64_t id, std::string& out) {
  Statement links(database,
                  "SELECT kind || ':' || link_id FROM link WHERE a_port = ? OR z_port = ? "
                  "ORDER BY link_id");
  links.bindAll(id, id);
  out += ",\"links\":[";
  while (links.step()) {
    if (out.back() != '[') out += ',';
    appendJsonText(out, links.text(0));
  }
  out += ']';
}

}  // namespace

std::optional<PortName> portOf(const std::string& text) {
  std::array<std::int64_t, 1> id{};
  if (readNumbers(text, '/', id)) return id[0];
  PortPlace place{};
  if (readNumbers(text, '/', place)) return place;
  return std::nullopt;
}

std::optional<PortStates> statesOf(const std::string& text) {
  PortStates states{};
  if (readNumbers(text, ',', states)) return states;
  return std::nullopt;
}

std::string portStatus(Database& database, const PortName& port,
                       const std::optional<PortStates>& states) {
  database.requireInventory();
  Transaction transaction(database, states ? "BEGIN IMMEDIATE" : "BEGIN");
  const auto* place = std::get_if<PortPlace>(&port);
  const std::int64_t id = place != nullptr ? idAt(database, *place) : std::get<std::int64_t>(port);
  if (states) setStates(database, id, *states);
  std::string line = "{";
  appendPort(database, id, line);
  appendLinks(database, id, line);
  line += '}';
  transaction.commit();
  return line;
}

std::string portStatus(const std::string& databaseFile, const PortName& port,
                       const std::optional<PortStates>& states) {
  Database database(databaseFile, states ? Database::Mode::ReadWrite : Database::Mode::ReadOnly);
  return portStatus(database, port, states);
}

}  // namespace ormasim
