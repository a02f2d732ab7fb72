// Resource instances of one class, page by page: GET and POST of
// /rest/resource/v3/instances/objects/FixedNetworkElement, and POST of
// …/FixedNetworkFrame/actions/query and …/FixedNetworkCard/actions/query.
#include <algorithm>
#include <charconv>
#include <optional>

#include "instance_filter.h"
#include "json_writer.h"
#include "parameters.h"
#include "request_document.h"
#include "resource_objects.h"
#include "services.h"

namespace ormasim {
namespace {

constexpr std::int64_t kDefaultLimit = 200;
constexpr std::int64_t kMaxLimit = 10'000;

// The resources of a class, in the order of two numbers.
struct InstanceClass {
  std::vector<InstanceMember> members;
  const char* numbers;  // the two columns
  const char* source;   // ?1 and ?2 are the numbers behind which a page begins
  const char* order;
  CaseFlag caseFlag;
};

const InstanceClass& elements() {
  static const InstanceClass elements{{{"nativeId", "native_id", false},
                                       {"name", "name", false},
                                       {"neType", kDeviceTypeColumn, true},
                                       {"ipAddress", "ip_address", false},
                                       {"softwareVersion", "version_name", false},
                                       {"remark", "remark", false}},
                                      "dev_id, 0",
                                      "device WHERE dev_id > ?1 AND ?2 >= 0",
                                      "dev_id",
                                      CaseFlag::Boolean};
  return elements;
}

constexpr char kResourceNumbers[] = "dev_id, seq";

const InstanceClass& frames() {
  static const InstanceClass frames{
      {{"nativeId", "native_id", false}, {"name", "name", false}, {"frameType", "sub_type", true}},
      kResourceNumbers,
      "resource WHERE (dev_id, seq) > (?1, ?2) AND main_type = 3",
      kResourceNumbers,
      CaseFlag::Text};
  return frames;
}

const InstanceClass& cards() {
  static const InstanceClass cards{
      {{"nativeId", "native_id", false}, {"name", "name", false}, {"cardType", "sub_type", true}},
      kResourceNumbers,
      "resource WHERE (dev_id, seq) > (?1, ?2) AND main_type IN (20, 21)",
      kResourceNumbers,
      CaseFlag::Text};
  return cards;
}

struct InstancePosition {
  std::int64_t device = 0;
  std::int64_t sequence = 0;
};

std::string markerFor(const InstancePosition& position) {
  return "i" + std::to_string(position.device) + "-" + std::to_string(position.sequence);
}

InstancePosition positionFrom(const Json::Value& marker) {
  const std::string text = marker.isString() ? marker.asString() : "";
  const std::size_t dash = text.find('-');
  InstancePosition position;
  if (dash != std::string::npos) {
    std::from_chars(text.data() + 1, text.data() + dash, position.device);
    std::from_chars(text.data() + dash + 1, text.data() + text.size(), position.sequence);
  }
  // Anything that would not be written so again does not come from here.
  if (position.device < 1 || position.sequence < 0 || markerFor(position) != text) {
    throw BadRequest("\"marker\" is none that a page has handed out");
  }
  return position;
}

// The members to give, in the order asked; all when nobody asks.
std::vector<InstanceMember> selectedMembers(const Json::Value& document,
                                            const InstanceClass& instances) {
  if (!document.isMember("content-selector")) return instances.members;
  const Json::Value& selector = document["content-selector"];
  if (!selector.isArray() || selector.empty()) {
    throw BadRequest("\"content-selector\" must be an array that is not empty");
  }
  std::vector<InstanceMember> selected;
  for (const Json::Value& name : selector) {
    const InstanceMember& member = memberNamed(instances.members, name, "content-selector");
    const bool again =
        std::any_of(selected.begin(), selected.end(),
                    [&member](const InstanceMember& one) { return one.name == member.name; });
    if (again) throw BadRequest(std::string("\"content-selector\" has ") + member.name + " twice");
    selected.push_back(member);
  }
  return selected;
}

class InstanceReader {
 public:
  explicit InstanceReader(Database& database) : database_(database) {}

  // Appends a page behind `position`, and moves that to its last instance; whether there is more.
  bool appendPage(const InstanceClass& instances, const std::vector<InstanceMember>& members,
                  const InstanceFilter& filter, std::int64_t limit, InstancePosition& position,
                  std::string& out) {
    std::string columns = instances.numbers;
    for (const InstanceMember& member : members) columns += std::string(", ") + member.column;
    Transaction transaction(database_);
    Statement rows(database_, "SELECT " + columns + " FROM " + instances.source + filter.sql +
                                  " ORDER BY " + instances.order);
    bind(rows, position, filter);
    bool more = rows.step();
    for (; more && limit > 0; --limit) {
      position = {rows.integer(0), rows.integer(1)};
      appendInstance(rows, members, out);
      more = rows.step();
    }
    rows.reset();
    transaction.commit();
    return more;
  }

 private:
  static void bind(Statement& rows, const InstancePosition& after, const InstanceFilter& filter) {
    rows.bindAll(after.device, after.sequence);
    int index = 2;
    for (const auto& value : filter.values) {
      ++index;
      if (const auto* text = std::get_if<std::string>(&value)) {
        rows.bind(index, std::string_view(*text));
      } else {
        rows.bind(index, std::get<std::int64_t>(value));
      }
    }
  }

  static void appendInstance(const Statement& row, const std::vector<InstanceMember>& members,
                             std::string& out) {
    out += out.back() != '[' ? ",{" : "{";
    int column = 2;
    for (const InstanceMember& member : members) {
      if (column > 2) out += ',';
      if (member.number) {
        appendMember(out, member.name, row.integer(column));
      } else {
        appendMember(out, member.name, row.text(column));
      }
      ++column;
    }
    out += '}';
  }

  Database& database_;
};

std::string answerInstances(const Json::Value& document, const InstanceClass& instances,
                            Inventory& inventory) {
  requireKnownMembers(document, "the body", {"content-selector", "condition", "limit", "marker"});
  const std::vector<InstanceMember> members = selectedMembers(document, instances);
  InstanceFilter filter;
  if (document.isMember("condition")) {
    filter = instanceFilterOf(document["condition"], instances.members, instances.caseFlag);
  }
  const std::int64_t limit =
      document.isMember("limit") ? limitOf(document["limit"], kMaxLimit) : kDefaultLimit;
  InstancePosition position;
  if (document.isMember("marker")) position = positionFrom(document["marker"]);

  std::string body = "{\"objList\":[";
  const bool more = inventory.reader<InstanceReader>().appendPage(instances, members, filter, limit,
                                                                  position, body);
  body += more ? "],\"isTruncated\":true," : "],\"isTruncated\":false,";
  appendMember(body, "marker", more ? markerFor(position) : "");
  return body + "}\n";
}

// The parameters of a GET as the document that a POST would carry.
Json::Value documentOfParameters(const httplib::Request& request) {
  requireKnownParameters(request, {"content-selector", "condition", "limit", "marker"});
  Json::Value document(Json::objectValue);
  for (const char* name : {"content-selector", "condition"}) {
    const auto parameter = request.params.find(name);
    if (parameter == request.params.end()) continue;
    const std::string what = std::string("parameter \"") + name + "\"";
    document[name] = parseDocument(parameter->second, what.c_str());
  }
  document["limit"] = Json::Int64{integerParameter(request, "limit", kDefaultLimit, 1, kMaxLimit)};
  const auto marker = request.params.find("marker");
  if (marker != request.params.end()) document["marker"] = marker->second;
  return document;
}

}  // namespace

std::string answerElements(const httplib::Request& request, Inventory& inventory) {
  return answerInstances(postedDocument(request), elements(), inventory);
}

std::string answerElementsByParameters(const httplib::Request& request, Inventory& inventory) {
  return answerInstances(documentOfParameters(request), elements(), inventory);
}

std::string answerFrames(const httplib::Request& request, Inventory& inventory) {
  return answerInstances(postedDocument(request), frames(), inventory);
}

std::string answerCards(const httplib::Request& request, Inventory& inventory) {
  return answerInstances(postedDocument(request), cards(), inventory);
}

}  // namespace ormasim
