// Labels of resources that are named by their DNs.
#include <json/value.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <iterator>

#include "emfglobal.h"
#include "emfresinterface.h"
#include "orma/rest/nbi_http_proxy.h"
#include "resourcenames.h"
#include "watchedcall.h"

namespace {

using NS_UTIL::NBIHTTPProxy;
using Fdns = std::vector<std::string>;

constexpr char kSourceName[] = "emfresinterface";
constexpr std::size_t kFirstBound = 100;

std::int64_t numberOf(const Json::Value& value) { return value.asInt(); }

std::int64_t numberInText(const Json::Value& value) {
  return std::strtol(value.asCString(), nullptr, 10);
}

// A main type and the key that holds its sub type.
struct TypeRow {
  std::int64_t mainType;
  const char* subTypeKey;
};

// What tells one kind of resource from another.
struct LabelKind {
  const char* word;  // for getResourceLabelsByRest
  const char* operation;
  bool (*read)(Json::Value&, const Fdns&);
  const char* dnKey;
  const char* typeKey;  // an object without it is skipped
  TypeRow type;
  TypeRow daughterType;  // where "isDaughterCard" is true; without a key: no such kind
  std::int64_t (*subType)(const Json::Value&);
};

// In the order in which a mixed set is fetched.
constexpr LabelKind kKinds[] = {
    {"PORT",
     "getPortResourceLabelsByRest",
     NBIHTTPProxy::GetPortResourcePropertyByFDNs,
     "nativeId",
     "portType",
     {6, "portType"},
     {},
     numberOf},
    {"CARD",
     "getCardResourceLabelsByRest",
     NBIHTTPProxy::GetCardResourcePropertyByFDNs,
     "nativeId",
     "isDaughterCard",
     {20, "cardType"},
     {21, "daughterCardType"},
     numberOf},
    // The one kind whose DN is not "nativeId".
    {"SLOT",
     "getSlotResourceLabelsByRest",
     NBIHTTPProxy::GetSlotResourcePropertyByFDNs,
     "slotNativeId",
     "isDaughterCard",
     {4, "cardType"},
     {5, "daughterCardType"},
     numberOf},
    // The one kind whose type is a text.
    {"FRAME",
     "getFrameResourceLabelsByRest",
     NBIHTTPProxy::GetFrameResourcePropertyByFDNs,
     "nativeId",
     "frameType",
     {3, "frameType"},
     {},
     numberInText},
    {"NE",
     "getNEResourceLabelsByRest",
     NBIHTTPProxy::GetNEResourcePropertyByFDNs,
     "nativeId",
     "detailDevType",
     {1, "detailDevType"},
     {},
     numberOf},
};
enum KindIndex { kPort, kCard, kSlot, kFrame, kElement, kKindCount };
static_assert(std::size(kKinds) == kKindCount);

// The first text that a DN contains decides, so a port wins over the card that it is on.
struct DnMark {
  const char* text;
  KindIndex kind;
};
constexpr DnMark kDnMarks[] = {{",PP=", kPort}, {",LP=", kPort}, {",SC=", kCard}, {",SS=", kSlot},
                               {",CP=", kCard}, {",S=", kSlot},  {",FR=", kFrame}};

KindIndex kindOf(const std::string& dn) {
  for (const DnMark& mark : kDnMarks) {
    if (dn.find(mark.text) != std::string::npos) return mark.kind;
  }
  return kElement;
}

const TypeRow& typeRowOf(const LabelKind& kind, const Json::Value& object) {
  const bool isDaughter =
      kind.daughterType.subTypeKey != nullptr && object["isDaughterCard"].asBool();
  return isDaughter ? kind.daughterType : kind.type;
}

ResourceDn recordOf(const LabelKind& kind, const Json::Value& object) {
  ResourceDn record;
  record.resDN = object[kind.dnKey].asString();
  record.label = ToNorthCharset(object["name"].asString().c_str());
  const TypeRow& type = typeRowOf(kind, object);
  record.type.resMainTypeID = type.mainType;
  record.type.resSubTypeID = kind.subType(object[type.subTypeKey]);
  return record;
}

void appendRecords(const LabelKind& kind, Json::Value& objects, std::list<ResourceDn>& out) {
  for (Json::Value& object : objects) {
    const Json::Value& present = object;
    if (!present[kind.typeKey].isNull()) out.push_back(recordOf(kind, present));
    Json::Value().swap(object);  // freed while the processor's caches still hold it
  }
  EMF_TRACE(kSourceName, TaDebugWithPara(3, "EMFResMgrI::%s jsonInfos size = %d", kind.operation,
                                         static_cast<int>(objects.size())));
}

// Sorts the names of `dnMap` by kind.
std::array<Fdns, kKindCount> namesByKind(const std::map<int, std::string>& dnMap) {
  std::array<Fdns, kKindCount> names;
  const int size = static_cast<int>(dnMap.size());
  for (auto entry = dnMap.lower_bound(0); entry != dnMap.end() && entry->first < size; ++entry) {
    const std::string& dn = entry->second;
    EMF_TRACE(kSourceName,
              TaDebugWithPara(3, "EMFResMgrI::getResourceLabels  resDN = %s", dn.c_str()));
    names[kindOf(dn)].push_back(dn);
  }
  return names;
}

// The bound is a position that doubles, meant so: the second batch is as long as the first, each
// later one as long as all before it.
std::int64_t labelsOf(KindIndex index, std::list<ResourceDn>& out, const Fdns& fdns) {
  const LabelKind& kind = kKinds[index];
  if (index == kPort) {
    EMF_TRACE(kSourceName, TaDebugWithPara(3, "EMFResMgrI::%s called", kind.operation));
  }
  std::size_t bound = kFirstBound;
  for (auto next = fdns.begin(); next != fdns.end(); bound *= 2) {
    const auto end = fdns.begin() + static_cast<std::ptrdiff_t>(std::min(bound, fdns.size()));
    Json::Value answer;
    kind.read(answer, Fdns(next, end));
    next = end;
    if (answer.isObject() && answer["objList"].isArray()) {
      appendRecords(kind, answer["objList"], out);
    }
  }
  return 0;
}

}  // namespace

std::int64_t EMFResMgrI::getPortResourceLabelsByRest(std::list<ResourceDn>& out, const Fdns& fdns) {
  emf::WatchedCall call("EMFResMgrI::getPortResourceLabelsByRest");
  return call.result(labelsOf(kPort, out, fdns));
}

std::int64_t EMFResMgrI::getSlotResourceLabelsByRest(std::list<ResourceDn>& out, const Fdns& fdns) {
  emf::WatchedCall call("EMFResMgrI::getSlotResourceLabelsByRest");
  return call.result(labelsOf(kSlot, out, fdns));
}

std::int64_t EMFResMgrI::getCardResourceLabelsByRest(std::list<ResourceDn>& out, const Fdns& fdns) {
  emf::WatchedCall call("EMFResMgrI::getCardResourceLabelsByRest");
  return call.result(labelsOf(kCard, out, fdns));
}

std::int64_t EMFResMgrI::getFrameResourceLabelsByRest(std::list<ResourceDn>& out,
                                                      const Fdns& fdns) {
  emf::WatchedCall call("EMFResMgrI::getFrameResourceLabelsByRest");
  return call.result(labelsOf(kFrame, out, fdns));
}

std::int64_t EMFResMgrI::getNEResourceLabelsByRest(std::list<ResourceDn>& out, const Fdns& fdns) {
  emf::WatchedCall call("EMFResMgrI::getNEResourceLabelsByRest");
  return call.result(labelsOf(kElement, out, fdns));
}

std::int64_t EMFResMgrI::getResourceLabelsByRest(std::list<ResourceDn>& out, const Fdns& fdns,
                                                 const std::string& resType) {
  emf::WatchedCall call("EMFResMgrI::getResourceLabelsByRest");
  EMF_TRACE(kSourceName, TaDebugWithPara(3, "EMFResMgrI::getResourceLabelsByRest called"));
  for (int index = kPort; index < kKindCount; ++index) {
    if (resType == kKinds[index].word)
      return call.result(labelsOf(static_cast<KindIndex>(index), out, fdns));
  }
  return 0;
}

std::int64_t EMFResMgrI::getResourceLabels(std::list<ResourceDn>& out,
                                           const std::map<int, std::string>& dnMap) {
  const emf::WatchedCall call("EMFResMgrI::getResourceLabels");
  if (dnMap.empty()) return 0;
  EMF_TRACE(kSourceName, TaDebugWithPara(3, "EMFResMgrI::getResourceLabels  dnMapSize = %d",
                                         static_cast<int>(dnMap.size())));
  const std::array<Fdns, kKindCount> names = namesByKind(dnMap);
  for (int index = kPort; index < kKindCount; ++index) {
    std::list<ResourceDn> records;
    getResourceLabelsByRest(records, names[static_cast<std::size_t>(index)], kKinds[index].word);
    out.splice(out.end(), records);
  }
  return 0;
}

std::int64_t EMFResMgrI::getResourceLabelsEx(std::list<ResourceDn>& out,
                                             const std::map<int, std::string>& dnMap) {
  emf::WatchedCall call("EMFResMgrI::getResourceLabelsEx");
  return call.result(getResourceLabels(out, dnMap));
}

std::int64_t EMFResMgrI::getAllNeResLabel(std::map<std::string, std::string>& out) {
  emf::WatchedCall call("EMFResMgrI::getAllNeResLabel");
  EMF_TRACE(kSourceName, TaTrace("EMFResMgrI::getAllNeResLabel Entered!"));
  std::vector<Json::Value> objects;
  if (!NBIHTTPProxy::GetAllDevProperty(objects)) call.fail();
  int taken = 0;
  for (Json::Value& object : objects) {
    const std::string neDn = object["nativeId"].asString();
    if (neDn.find(',') == std::string::npos) {
      const std::string neLabel = ToNorthCharset(object["name"].asString().c_str());
      // Names another operation, meant so.
      EMF_TRACE(kSourceName,
                TaDebugWithPara(3, "EMFResMgrI::getResourceLabels  neDN = %s, neLabel = %s",
                                neDn.c_str(), neLabel.c_str()));
      if (out.emplace(neDn, neLabel).second) ++taken;
    }
    Json::Value().swap(object);  // freed while the processor's caches still hold it
  }
  EMF_TRACE(kSourceName, TaDebugWithPara(3, "getAllNeResLabel GetAllDevProperty size = %d", taken));
  return 0;
}
