// POST /rest/resource/v2/metadatas/main-resource-type: the main types, page by page.
#include <algorithm>
#include <charconv>

#include "json_writer.h"
#include "request_document.h"
#include "services.h"

namespace ormasim {
namespace {

constexpr std::int64_t kDefaultLimit = 200;
constexpr std::int64_t kMaxLimit = 10'000;
constexpr Json::ArrayIndex kMostIds = 1000;

class MainTypeReader {
 public:
  explicit MainTypeReader(Database& database)
      : types_(database, "SELECT type_id, name FROM main_type WHERE type_id > ? ORDER BY type_id") {
  }

  // Appends a page behind `last`, of the wanted types or of all when none are; whether there is
  // more. `last` moves to the page's last type.
  bool appendPage(const std::vector<std::int64_t>& wanted, std::int64_t limit, std::int64_t& last,
                  std::string& out) {
    types_.bindAll(last);
    bool more = false;
    while (types_.step()) {
      const std::int64_t id = types_.integer(0);
      if (!wanted.empty() && std::find(wanted.begin(), wanted.end(), id) == wanted.end()) continue;
      more = limit-- == 0;
      if (more) break;
      out += out.back() != '[' ? ",{" : "{";
      appendMember(out, "id", id);
      out += ',';
      appendMember(out, "name", types_.text(1));
      out += '}';
      last = id;
    }
    types_.reset();
    return more;
  }

 private:
  Statement types_;
};

std::vector<std::int64_t> idsOf(const Json::Value& ids) {
  if (!ids.isArray() || ids.empty() || ids.size() > kMostIds) {
    throw BadRequest("\"ids\" must be an array of 1 to 1000 whole numbers");
  }
  std::vector<std::int64_t> wanted;
  for (const Json::Value& id : ids) {
    if (!id.isInt64()) throw BadRequest("\"ids\" must hold whole numbers only");
    wanted.push_back(id.asInt64());
  }
  return wanted;
}

std::string markerFor(std::int64_t last) { return "m" + std::to_string(last); }

std::int64_t positionFrom(const Json::Value& marker) {
  const std::string text = marker.isString() ? marker.asString() : "";
  std::int64_t last = -1;
  if (!text.empty()) std::from_chars(text.data() + 1, text.data() + text.size(), last);
  if (last < 0 || markerFor(last) != text) {
    throw BadRequest("\"marker\" is none that a page has handed out");
  }
  return last;
}

}  // namespace

std::string answerMainTypes(const httplib::Request& request, Inventory& inventory) {
  const Json::Value document = postedDocument(request);
  requireKnownMembers(document, "the body", {"ids", "limit", "marker"});
  const std::int64_t limit =
      document.isMember("limit") ? limitOf(document["limit"], kMaxLimit) : kDefaultLimit;
  std::int64_t last = document.isMember("marker") ? positionFrom(document["marker"]) : 0;
  std::vector<std::int64_t> wanted;
  if (document.isMember("ids")) wanted = idsOf(document["ids"]);

  std::string body = "{\"mainResTypes\":[";
  const bool more = inventory.reader<MainTypeReader>().appendPage(wanted, limit, last, body);
  body += more ? "],\"isTruncated\":true," : "],\"isTruncated\":false,";
  appendMember(body, "marker", more ? markerFor(last) : "");
  return body + "}\n";
}

}  // namespace ormasim
