// POST /rest/resource/v3/instances/objects: what an element holds, by a graph query, page by page.
#include "json_writer.h"
#include "request_document.h"
#include "resource_objects.h"
#include "services.h"

namespace ormasim {
namespace {

constexpr std::int64_t kDefaultLimit = 200;
constexpr std::int64_t kMaxLimit = 10'000;

// The one traversal that is understood, around the element's name.
constexpr std::string_view kQueryStart = "g.V('";
constexpr std::string_view kQueryEnd = "').hasLabel('FixedNetworkElement').out('Has')";

[[noreturn]] void refuseQuery(const std::string& why) {
  throw BadRequest("\"query-text\" " + why + "; what is understood is \"" +
                   std::string(kQueryStart) + "NE=2" + std::string(kQueryEnd) +
                   "\", with double quotes around it within the text");
}

// The element's name.
std::string elementOf(const Json::Value& queryText) {
  if (!queryText.isString()) refuseQuery("must be a text");
  std::string query = queryText.asString();
  if (query.size() < 2 || query.front() != '"' || query.back() != '"') {
    refuseQuery("has no double quotes around it");
  }
  query = query.substr(1, query.size() - 2);
  if (query.size() < kQueryStart.size() + kQueryEnd.size() ||
      query.compare(0, kQueryStart.size(), kQueryStart) != 0 ||
      query.compare(query.size() - kQueryEnd.size(), kQueryEnd.size(), kQueryEnd) != 0) {
    refuseQuery("is another traversal");
  }
  const std::string element =
      query.substr(kQueryStart.size(), query.size() - kQueryStart.size() - kQueryEnd.size());
  if (element.empty() || element.find_first_of("'\"\\") != std::string::npos) {
    refuseQuery("names no element");
  }
  return element;
}

class ContainedReader {
 public:
  explicit ContainedReader(Database& database)
      : database_(database),
        device_(database, "SELECT dev_id FROM device WHERE native_id = ?"),
        resources_(database, std::string("SELECT ") + kResourceColumns +
                                 ", seq FROM resource WHERE dev_id = ? AND seq > ? ORDER BY seq") {}

  // The number of the element, or of none.
  std::int64_t deviceOf(const std::string& nativeId) {
    device_.bindAll(std::string_view(nativeId));
    const std::int64_t device = device_.step() ? device_.integer(0) : 0;
    device_.reset();
    return device;
  }

  // Appends a page and moves the cursor behind it; whether there is more.
  bool appendPage(QueryCursor& cursor, std::string& out) {
    Transaction transaction(database_);
    resources_.bindAll(cursor.device, cursor.after);
    bool more = resources_.step();
    for (std::int64_t left = cursor.limit; more && left > 0; --left) {
      appendResource(resources_, out);
      cursor.after = resources_.integer(4);
      more = resources_.step();
    }
    resources_.reset();
    transaction.commit();
    return more;
  }

 private:
  Database& database_;
  Statement device_;
  Statement resources_;
};

// The walk that a request begins or goes on with.
QueryCursor cursorOf(const Json::Value& document, Inventory& inventory) {
  if (document.isObject() && document.isMember("query-id")) {
    requireMembers(document, "the body", {"query-id"});
    const Json::Value& id = document["query-id"];
    const auto cursor = id.isString() ? inventory.cursors().take(id.asString()) : std::nullopt;
    if (!cursor) throw BadRequest("\"query-id\" has expired, was used already or is none");
    return *cursor;
  }
  requireKnownMembers(document, "the body", {"query-text", "limit"});
  QueryCursor cursor;
  cursor.device = inventory.reader<ContainedReader>().deviceOf(elementOf(document["query-text"]));
  cursor.limit = document.isMember("limit") ? limitOf(document["limit"], kMaxLimit) : kDefaultLimit;
  return cursor;
}

}  // namespace

std::string answerGraphQuery(const httplib::Request& request, Inventory& inventory) {
  QueryCursor cursor = cursorOf(postedDocument(request), inventory);
  std::string body = "{\"objList\":[";
  const bool more = inventory.reader<ContainedReader>().appendPage(cursor, body);
  body += "],";
  appendMember(body, "queryId", more ? inventory.cursors().open(cursor) : std::string());
  return body + "}\n";
}

}  // namespace ormasim
