// POST /rest/resource/v2/<kind>-properties {"nativeIds": […]}: properties of resources of a kind.
#include <algorithm>

#include "equipment_tables.h"
#include "request_document.h"
#include "resource_objects.h"
#include "services.h"

namespace ormasim {
namespace {

constexpr std::size_t kMostNames = 100'000;
constexpr char kManagementSystem[] = "OS=1";

// What a read of one kind finds: resources of either of two main types.
struct PropertyKind {
  std::int64_t mainType;
  std::int64_t daughterType;
};

std::vector<std::string> namesOf(const httplib::Request& request) {
  const Json::Value document = postedDocument(request);
  requireMembers(document, "the body", {"nativeIds"});
  return textsOf(document["nativeIds"], "nativeIds", kMostNames);
}

class PropertyReader {
 public:
  explicit PropertyReader(Database& database)
      : database_(database),
        resource_(database, std::string("SELECT ") + kResourceColumns +
                                " FROM resource WHERE native_id = ? AND main_type IN (?, ?)"),
        device_(database, std::string("SELECT native_id, 1, ") + kDeviceTypeColumn +
                              ", name FROM device WHERE native_id = ?"),
        system_(database, "SELECT 'OS=1', 1, 0, 'OS'") {}

  // The objects in the order of the names; a name that is none of the kind has no object.
  void append(const std::vector<std::string>& names, const PropertyKind& kind, std::string& out) {
    Transaction transaction(database_);
    for (const std::string& name : names) {
      resource_.bindAll(std::string_view(name), kind.mainType, kind.daughterType);
      appendFound(resource_, out);
    }
    transaction.commit();
  }

  void appendElements(const std::vector<std::string>& names, std::string& out) {
    Transaction transaction(database_);
    for (const std::string& name : names) {
      if (name == kManagementSystem) {
        appendFound(system_, out);
      } else {
        device_.bindAll(std::string_view(name));
        appendFound(device_, out);
      }
    }
    transaction.commit();
  }

 private:
  static void appendFound(Statement& statement, std::string& out) {
    if (statement.step()) appendResource(statement, out);
    statement.reset();
  }

  Database& database_;
  Statement resource_;
  Statement device_;
  Statement system_;
};

std::string answerKind(const httplib::Request& request, Inventory& inventory,
                       const PropertyKind& kind) {
  std::string body = "{\"objList\":[";
  inventory.reader<PropertyReader>().append(namesOf(request), kind, body);
  return body + "]}\n";
}

}  // namespace

std::string answerPortProperties(const httplib::Request& request, Inventory& inventory) {
  return answerKind(request, inventory, {kPortType, kPortType});
}

std::string answerSlotProperties(const httplib::Request& request, Inventory& inventory) {
  return answerKind(request, inventory, {kSlotType, kDaughterSlotType});
}

std::string answerCardProperties(const httplib::Request& request, Inventory& inventory) {
  return answerKind(request, inventory, {kCardType, kDaughterCardType});
}

std::string answerFrameProperties(const httplib::Request& request, Inventory& inventory) {
  return answerKind(request, inventory, {kFrameType, kFrameType});
}

std::string answerElementProperties(const httplib::Request& request, Inventory& inventory) {
  std::string body = "{\"objList\":[";
  inventory.reader<PropertyReader>().appendElements(namesOf(request), body);
  return body + "]}\n";
}

}  // namespace ormasim
