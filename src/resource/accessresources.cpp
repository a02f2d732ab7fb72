#include "accessresources.h"

#include "emfglobal.h"
#include "emfresinterface.h"
#include "jsontext.h"
#include "orma/ident/resource_ids.h"
#include "orma/rest/nbi_http_proxy.h"
#include "orma/text/text.h"
#include "resourcenames.h"
#include "watchedcall.h"

namespace {

using NS_UTIL::UtilCommon;

constexpr char kSourceName[] = "emfresinterface";
constexpr char kFramePath[] = "/rest/resource/v3/instances/objects/FixedNetworkFrame/actions/query";
constexpr char kCardPath[] = "/rest/resource/v3/instances/objects/FixedNetworkCard/actions/query";
constexpr int kMostResources = 1000;
constexpr int kPortPart = 2;  // of a port segment's value

// The words of a label. The Chinese ones are GBK, and so is a label before its conversion.
struct LabelWords {
  const char* language;
  const char* frame;
  const char* slot;
  const char* port;
  bool isGbk;
};
constexpr LabelWords kLabelWords[] = {
    {"zh_CN", "\xBF\xF2", "\xB2\xDB", "\xB6\xCB\xBF\xDA", true},
    {"en_US", "Frame", "Slot", "Port", false},
};

bool isPort(const std::string& moc) { return moc == "PP" || moc == "LP"; }

std::string segment(const std::map<std::string, std::string>& segments, const char* key) {
  const auto found = segments.find(key);
  return found == segments.end() ? std::string() : found->second;
}

void addExpression(const std::string& fdn, Json::Value& filter) {
  Json::Value expression(Json::objectValue);
  expression["name"] = "nativeId";
  expression["operator"] = "equal";
  expression["caseSensitive"] = "false";  // a text here, meant so
  expression["value"] = fdn;
  filter["simple"].append(expression);
}

// Replaces `text` by a member that is not null.
void takeText(const Json::Value& member, std::string& text) {
  if (member.isNull()) return;
  if (const char* characters = member.asCString()) text = characters;
}

// An object without a name takes the name of the one before it, one without an FDN names the one
// before it anew: meant so.
void storeLabels(const Json::Value& objects, AccessResources& byFdn) {
  std::string fdn;
  std::string name;
  for (const Json::Value& object : objects) {
    takeText(object["nativeId"], fdn);
    takeText(object["name"], name);
    if (object["name"].isNull()) {
      EMF_TRACE(kSourceName, TaDebug(1, "getResultFromJson unknown RSP"));
    }
    byFdn[fdn].label = ToNorthCharset(name.c_str());
  }
}

// The request document of a query with that filter.
std::string documentOf(Json::Value& filter, Json::Value& document) {
  filter["logOp"] = "or";
  document["condition"]["filter"] = filter;
  return emf::styledText(document);
}

Json::Value unfilteredDocument() {
  Json::Value document(Json::objectValue);
  Json::Value& selector = document["content-selector"];
  selector.append("nativeId");
  selector.append("name");
  document["limit"] = kMostResources;
  return document;
}

void queryLabels(Json::Value frameFilter, Json::Value cardFilter, AccessResources& byFdn) {
  Json::Value document = unfilteredDocument();
  if (!frameFilter.empty()) {
    const std::string body = documentOf(frameFilter, document);
    EMF_TRACE(kSourceName,
              TaDebugWithPara(3, "JsonAccessResFrame strFrameUrl = %s, JsonReqBody = %s",
                              kFramePath, body.c_str()));
    QueryAccessResource(kFramePath, body, byFdn);
  }
  if (!cardFilter.empty()) {
    const std::string body = documentOf(cardFilter, document);
    EMF_TRACE(kSourceName,
              TaDebugWithPara(3, "JsonDaughterCard strDaughterCardUrl = %s, JsonReqBody = %s",
                              kCardPath, body.c_str()));
    QueryAccessResource(kCardPath, body, byFdn);
  }
}

}  // namespace

std::string BuildLocationLabel(const std::string& kind, const std::string& frame,
                               const std::string& slot, const std::string& port) {
  const std::string language = Ormacommon::OrmaMsg::instance()->getLanguage();
  for (const LabelWords& words : kLabelWords) {
    if (language != words.language) continue;
    std::string label = words.frame;
    label.append(":").append(frame).append("/").append(words.slot).append(":").append(slot);
    if (kind != "CP") label.append("/").append(words.port).append(":").append(port);
    if (!words.isGbk) return label;
    std::string converted;
    OrmaGlobalUtils::OrmaCodeSetConvert("GBK", "UTF-8", label, converted);
    return converted;
  }
  return std::string();
}

std::string BuildAccessLabel(const std::string& fdn) {
  const std::string moc = UtilCommon::GetMoc(fdn);
  std::map<std::string, std::string> segments;
  ParseFdnSegments(segments, fdn);
  std::string port;
  if (isPort(moc)) {
    std::string value = segment(segments, "PP");
    if (value.empty()) value = segment(segments, "LP");
    if (value.empty()) return std::string();
    std::map<int, std::string> parts;
    UtilCommon::GetSplitePPDataByLine(parts, value);
    UtilCommon::GetDataFromMap(parts, kPortPart, port);
  }
  return ToNorthCharset(
      BuildLocationLabel(moc, segment(segments, "FR"), segment(segments, "S"), port).c_str());
}

void FillAccessQuery(AccessResources& byFdn, Json::Value& frameFilter, Json::Value& cardFilter) {
  for (auto& [fdn, resource] : byFdn) {
    const std::string moc = UtilCommon::GetMoc(fdn);
    if (moc == "FR") {
      addExpression(fdn, frameFilter);
    } else if (moc == "SC") {
      addExpression(fdn, cardFilter);
    } else if (moc == "CP" || isPort(moc)) {
      resource.label = BuildAccessLabel(fdn);
    } else {
      EMF_TRACE(kSourceName,
                TaDebugWithPara(3, "getAccessResourceLabels not supported resMainTypeID = %d",
                                static_cast<int>(resource.resMainTypeID)));
    }
  }
}

void QueryAccessResource(const std::string& path, const std::string& body, AccessResources& byFdn) {
  EMF_TRACE(kSourceName, TaTrace("getResultFromJson Entered"));
  Json::Value answer;
  if (!NS_UTIL::NBIHTTPProxy::GetAcessResource(answer, path, body)) {
    EMF_TRACE(kSourceName, TaDebug(1, "getAccessResource is failed"));
  }
  // Looked at whatever the result was.
  if (answer.isObject()) {
    const Json::Value& objects = answer["objList"];
    EMF_TRACE(kSourceName,
              TaDebugWithPara(3, "getResultFromJson rsp size = %d,detail = %s",
                              static_cast<int>(objects.size()), objects.toStyledString().c_str()));
    storeLabels(objects, byFdn);
  }
  EMF_TRACE(kSourceName, TaTrace("getResultFromJson leaved"));
}

std::int64_t EMFResMgrI::getAccessResourceLabels(std::map<int, ResourceEightLoc>& locs) {
  const emf::WatchedCall call("EMFResMgrI::getAccessResourceLabels");
  if (locs.empty()) return 0;
  AccessResources byFdn;
  for (const auto& [key, resource] : locs) byFdn[resource.fdn] = resource;
  Json::Value frameFilter;
  Json::Value cardFilter;
  FillAccessQuery(byFdn, frameFilter, cardFilter);
  queryLabels(std::move(frameFilter), std::move(cardFilter), byFdn);
  for (auto& [key, resource] : locs) resource.label = byFdn[resource.fdn].label;
  return 0;
}
