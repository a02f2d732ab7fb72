#include "mainrestypes.h"

#include <json/value.h>

#include "emfresinterface.h"
#include "orma/rest/rest_client.h"
#include "paginators.h"
#include "resourcenames.h"
#include "watchedcall.h"

namespace {

constexpr char kPath[] = "/rest/resource/v2/metadatas/main-resource-type";
constexpr std::uint32_t kPageLimit = 200;

Nimbola::MarkerPaginator typePages() {
  Nimbola::RestReq request = NS_UTIL::MakeRestReq();
  request.url = kPath;
  request.method = Nimbola::kMethodBody;
  // No ids asks for every type.
  request.body = Nimbola::Json2PostData(Json::Value(Json::objectValue));
  Nimbola::MarkerPaginator pages(request);
  pages.listKey = "mainResTypes";
  pages.limit = kPageLimit;
  return pages;
}

}  // namespace

bool QueryMainResTypes(std::vector<std::pair<int, std::string>>& out) {
  Nimbola::MarkerPaginator pages = typePages();
  while (pages.hasMore) {
    Json::Value page;
    if (!pages.NextPage(page)) return false;
    for (const Json::Value& object : page) {
      out.emplace_back(object["id"].asInt(), object["name"].asString());
    }
  }
  return true;
}

std::int64_t EMFResMgrI::getResMainType(std::list<NbiResMainType>& out) {
  emf::WatchedCall call("EMFResMgrI::getResMainType");
  std::vector<std::pair<int, std::string>> types;
  if (!QueryMainResTypes(types)) return call.result(-1);
  for (const auto& [id, name] : types) {
    NbiResMainType type;
    type.id = id;
    type.name = ToNorthCharset(name.c_str());
    out.push_back(type);
  }
  return 0;
}
