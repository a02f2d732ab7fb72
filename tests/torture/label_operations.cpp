// The labels of EMFResMgrI.
#include <memory>

#include "emfresinterface.h"
#include "operation.h"
#include "platform.h"
#include "resource_records.h"

static std::ostream& operator<<(std::ostream& out, const ResourceEightLoc& location) {
  return out << location.fdn << " \"" << location.label << '"';
}

namespace emf::torture {
namespace {

using doubles::json;
using doubles::platform;
using doubles::ResourceQuery;
using Records = std::list<ResourceDn>;
using Fdns = std::vector<std::string>;

const std::string kLongLabel = "a label that takes memory of its own";

// Two batches: the first one's bound is 100.
Fdns namesEndingWith(const std::string& end) {
  Fdns names;
  for (int number = 0; number <= 100; ++number) {
    names.push_back("NE=" + std::to_string(number) + end);
  }
  return names;
}

// Each query is answered by an object for its first name, which any kind can be read from.
void scriptLabels() {
  platform().text.characterSetSwitch(1);
  platform().resources.answersBy([](const ResourceQuery& query, Json::Value& answer) {
    static const Json::Value& kObject =
        *new Json::Value(json(R"({"portType":1,"isDaughterCard":false,"cardType":1,)"
                              R"("frameType":"1","detailDevType":1})"));
    Json::Value object = kObject;
    object["nativeId"] = object["slotNativeId"] = query.fdns.front();
    object["name"] = kLongLabel;
    answer["objList"].append(object);
    return true;
  });
}

ResourceDn labelled(const std::string& dn, std::int64_t mainType) {
  return {dn, 0, "UTF-8>GBK:" + kLongLabel, {mainType, 1}};
}

const Records kBefore = {labelled("NE=9", 0)};
const std::map<std::string, Texts> kOutages = {{"resource query", {"0", "0", "0", kNoMemory}}};

using Read = std::int64_t (*)(Records&, const Fdns&);

Operation ofKind(const char* name, Read read, const std::string& end, std::int64_t mainType) {
  const auto names = std::make_shared<const Fdns>(namesEndingWith(end));
  return {name,
          calling(scriptLabels, kBefore, [read, names](auto& out) { return read(out, *names); }),
          {"0",
           textsOf(Records{kBefore.front(), labelled("NE=0" + end, mainType),
                           labelled("NE=100" + end, mainType)}),
           {}},
          Left::kSome,
          kOutages,
          {},
          {},
          1};
}

const std::map<int, std::string>& mixedNames() {
  static const auto& names = *new std::map<int, std::string>{
      {0, "NE=2"},           {1, "NE=2,FR=1"},      {2, "NE=2,FR=1,S=1"},
      {3, "NE=2,FR=1,CP=1"}, {4, "NE=2,FR=1,PP=1"}, {5, "NE=3,FR=1,LP=1,CP=2"}};
  return names;
}

Operation mixed(const char* name,
                std::int64_t (*read)(Records&, const std::map<int, std::string>&)) {
  return {name,
          calling(scriptLabels, kBefore, [read](auto& out) { return read(out, mixedNames()); }),
          {"0",
           textsOf(Records{kBefore.front(), labelled("NE=2,FR=1,PP=1", 6),
                           labelled("NE=2,FR=1,CP=1", 20), labelled("NE=2,FR=1,S=1", 4),
                           labelled("NE=2,FR=1", 3), labelled("NE=2", 1)}),
           {}},
          Left::kSome,
          kOutages,
          {},
          {},
          1};
}

void scriptDevices() {
  platform().text.characterSetSwitch(1);
  std::vector<Json::Value> objects;
  for (const char* id : {"NE=2", "NE=2,FR=1", "NE=3"}) {
    Json::Value object;
    object["nativeId"] = id;
    object["name"] = kLongLabel;
    objects.push_back(object);
  }
  platform().rest.devices(objects);
}

using Labels = std::map<std::string, std::string>;
const Labels kLabelBefore = {{"NE=2", "is there"}};
const Labels kLabelsAfter = {{"NE=2", "is there"}, {"NE=3", "UTF-8>GBK:" + kLongLabel}};

// --- Access resources

using Locations = std::map<int, ResourceEightLoc>;

ResourceEightLoc at(const std::string& fdn, const std::string& label) {
  ResourceEightLoc location;
  location.fdn = fdn;
  location.label = label;
  return location;
}

void scriptAccess() {
  platform().text.characterSetSwitch(1);
  platform().resources.answersBy([](const ResourceQuery& query, Json::Value& answer) {
    const bool isFrame = query.path.find("Frame") != std::string::npos;
    Json::Value object;
    object["nativeId"] = isFrame ? "NE=2,FR=1" : "NE=2,FR=1,S=1,SC=1";
    object["name"] = kLongLabel;
    answer["objList"].append(object);
    return true;
  });
}

const Locations kAccessBefore = {{1, at("NE=2,FR=1", "old")},
                                 {2, at("NE=2,FR=1,S=1,SC=1", "old")},
                                 {3, at("NE=2,FR=1,S=1,CP=1", "old")},
                                 {4, at("NE=2,FR=1,S=1,PP=0-1-7", "old")},
                                 {5, at("NE=2,XY=1", "old")}};
const Locations kAccessAfter = {
    {1, at("NE=2,FR=1", "UTF-8>GBK:" + kLongLabel)},
    {2, at("NE=2,FR=1,S=1,SC=1", "UTF-8>GBK:" + kLongLabel)},
    {3, at("NE=2,FR=1,S=1,CP=1", "UTF-8>GBK:Frame:1/Slot:1")},
    {4, at("NE=2,FR=1,S=1,PP=0-1-7", "UTF-8>GBK:Frame:1/Slot:1/Port:7")},
    {5, at("NE=2,XY=1", "old")}};

// A record keeps the label that it came with when there is none to be had.
std::map<std::string, Texts> oldLabels() {
  std::map<std::string, Texts> inPlaceOf;
  const Texts before = textsOf(kAccessBefore);
  const Texts after = textsOf(kAccessAfter);
  for (std::size_t i = 0; i < after.size(); ++i) inPlaceOf[after[i]] = {before[i]};
  return inPlaceOf;
}

}  // namespace

const std::vector<Operation>& labelOperations() {
  static const std::vector<Operation> rows = {
      ofKind("EMFResMgrI::getPortResourceLabelsByRest", EMFResMgrI::getPortResourceLabelsByRest,
             ",PP=1", 6),
      ofKind("EMFResMgrI::getCardResourceLabelsByRest", EMFResMgrI::getCardResourceLabelsByRest,
             ",CP=1", 20),
      ofKind("EMFResMgrI::getSlotResourceLabelsByRest", EMFResMgrI::getSlotResourceLabelsByRest,
             ",S=1", 4),
      ofKind("EMFResMgrI::getFrameResourceLabelsByRest", EMFResMgrI::getFrameResourceLabelsByRest,
             ",FR=1", 3),
      ofKind("EMFResMgrI::getNEResourceLabelsByRest", EMFResMgrI::getNEResourceLabelsByRest, "", 1),
      ofKind(
          "EMFResMgrI::getResourceLabelsByRest",
          [](Records& out, const Fdns& names) {
            static const std::string& kWord = *new std::string("FRAME");
            return EMFResMgrI::getResourceLabelsByRest(out, names, kWord);
          },
          ",FR=1", 3),
      mixed("EMFResMgrI::getResourceLabels", EMFResMgrI::getResourceLabels),
      mixed("EMFResMgrI::getResourceLabelsEx", EMFResMgrI::getResourceLabelsEx),
      {"EMFResMgrI::getAllNeResLabel",
       calling(scriptDevices, kLabelBefore,
               [](auto& out) { return EMFResMgrI::getAllNeResLabel(out); }),
       {"0", textsOf(kLabelsAfter), {}},
       Left::kSome,
       {{"device listing", {"0", kNoMemory}}},
       {},
       {},
       1},
      {"EMFResMgrI::getAccessResourceLabels",
       calling(scriptAccess, kAccessBefore,
               [](auto& out) { return EMFResMgrI::getAccessResourceLabels(out); }),
       {"0", textsOf(kAccessAfter), {}},
       Left::kSome,
       {{"resource query", {"0", "0", "0", kNoMemory}}},
       {},
       oldLabels(),
       5},
  };
  return rows;
}

}  // namespace emf::torture
