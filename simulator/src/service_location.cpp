// POST /rest/resource/v2/location-maintenance: where resources stand and who maintains them.
#include <charconv>
#include <optional>

#include "json_writer.h"
#include "request_document.h"
#include "services.h"

namespace ormasim {
namespace {

constexpr std::size_t kMostNames = 1000;

class LocationReader {
 public:
  explicit LocationReader(Database& database)
      : database_(database),
        element_(database,
                 "SELECT dev_id FROM device_place WHERE dev_id = ? UNION ALL "
                 "SELECT dev_id FROM resource WHERE res_id = ?"),
        place_(database,
               "SELECT country, province, city, address FROM device_place WHERE dev_id = ?"),
        keepers_(database,
                 "SELECT k.keeper_id, name, dept, phone_no, email FROM device_keeper "
                 "JOIN keeper k USING (keeper_id) WHERE dev_id = ? ORDER BY seq") {}

  // The body of the answer, read in one transaction.
  std::string answer(const std::vector<std::string>& names, bool withKeepers) {
    Transaction transaction(database_);
    std::string body = "{\"locationInfo\":[";
    for (const std::string& name : names) appendPlace(name, body);
    body += ']';
    if (withKeepers) {
      body += ",\"maintenanceInfo\":[";
      for (const std::string& name : names) appendKeepers(name, body);
      body += ']';
    }
    transaction.commit();
    return body + "}\n";
  }

 private:
  // The device that is meant, or in which what is meant stands. Names are "NE=" and a resource id
  // here, whatever the resource is.
  std::optional<std::int64_t> deviceOf(const std::string& name) {
    std::int64_t id = 0;
    if (name.compare(0, 3, "NE=") != 0) return std::nullopt;
    const char* const end = name.data() + name.size();
    const auto number = std::from_chars(name.data() + 3, end, id);
    if (number.ec != std::errc() || number.ptr != end) return std::nullopt;
    element_.bindAll(id, id);
    std::optional<std::int64_t> device;
    if (element_.step()) device = element_.integer(0);
    element_.reset();
    return device;
  }

  void appendPlace(const std::string& name, std::string& out) {
    const auto device = deviceOf(name);
    if (!device) return;
    place_.bindAll(*device);
    if (place_.step()) {
      out += out.back() != '[' ? ",{" : "{";
      appendMember(out, "nativeId", name);
      out += ",\"devMTInfo\":{";
      appendTexts(place_, {"country", "province", "city", "address"}, out);
      out += "}}";
    }
    place_.reset();
  }

  void appendKeepers(const std::string& name, std::string& out) {
    const auto device = deviceOf(name);
    if (!device) return;
    keepers_.bindAll(*device);
    while (keepers_.step()) {
      out += out.back() != '[' ? ",{" : "{";
      appendTexts(keepers_, {"iID", "name", "dept", "phoneNo", "email"}, out);
      out += '}';
    }
    keepers_.reset();
  }

  static void appendTexts(const Statement& row, std::initializer_list<const char*> members,
                          std::string& out) {
    int column = 0;
    for (const char* member : members) {
      if (out.back() != '{') out += ',';
      appendMember(out, member, row.text(column++));
    }
  }

  Database& database_;
  Statement element_;
  Statement place_;
  Statement keepers_;
};

}  // namespace

std::string answerLocation(const httplib::Request& request, Inventory& inventory) {
  const Json::Value document = postedDocument(request);
  requireMembers(document, "the body", {"nativeIds", "needMaintenanceInfo"});
  const std::vector<std::string> names = textsOf(document["nativeIds"], "nativeIds", kMostNames);
  const Json::Value& withKeepers = document["needMaintenanceInfo"];
  if (!withKeepers.isBool()) throw BadRequest("\"needMaintenanceInfo\" must be true or false");
  return inventory.reader<LocationReader>().answer(names, withKeepers.asBool());
}

}  // namespace ormasim
