// The operations that read labels of resources.
#include "emfresinterface.h"
#include "rest_operation_groups.h"

namespace emf::faults {
namespace {

// A name of that kind: "NE=12,FR=0" and so on, the number in its last segment.
struct LabelKind {
  const char* operation;
  const char* segment;
  const char* answerBefore;  // of an object, in front of its name
  const char* answerBehind;  // and behind it
  const char* type;
  std::int64_t (*labels)(std::list<ResourceDn>&, const std::vector<std::string>&);
};

constexpr LabelKind kPorts = {"getPortResourceLabelsByRest",
                              "NE=12,FR=0,S=1,SS=0,PP=",
                              R"({"nativeId":")",
                              R"(","name":"label","portType":65538})",
                              "6|65538",
                              EMFResMgrI::getPortResourceLabelsByRest};
constexpr LabelKind kCards = {"getCardResourceLabelsByRest",
                              "NE=12,FR=0,S=1,CP=",
                              R"({"nativeId":")",
                              R"(","name":"label","isDaughterCard":false,"cardType":1102})",
                              "20|1102",
                              EMFResMgrI::getCardResourceLabelsByRest};
constexpr LabelKind kSlots = {"getSlotResourceLabelsByRest",
                              "NE=12,FR=0,S=",
                              R"({"slotNativeId":")",
                              R"(","name":"label","isDaughterCard":true,"daughterCardType":2002})",
                              "5|2002",
                              EMFResMgrI::getSlotResourceLabelsByRest};
constexpr LabelKind kFrames = {"getFrameResourceLabelsByRest",
                               "NE=12,FR=",
                               R"({"nativeId":")",
                               R"(","name":"label","frameType":"5008"})",
                               "3|5008",
                               EMFResMgrI::getFrameResourceLabelsByRest};
constexpr LabelKind kElements = {"getNEResourceLabelsByRest",
                                 "NE=",
                                 R"({"nativeId":")",
                                 R"(","name":"label","detailDevType":131077})",
                                 "1|131077",
                                 EMFResMgrI::getNEResourceLabelsByRest};

std::string nameOf(const LabelKind& kind, int number) {
  return kind.segment + std::to_string(number);
}

// One batch whose answer names that resource alone.
Exchange batch(const LabelKind& kind, int number) {
  const std::string name = nameOf(kind, number);
  return {R"({"objList":[)" + (kind.answerBefore + name) + kind.answerBehind + "]}",
          {name + "|label|" + kind.type},
          true};
}

RestOperation labelOperation(const std::string& name, std::vector<Exchange> batches,
                             std::function<std::int64_t(std::list<ResourceDn>&)> call) {
  RestOperation operation{
      "EMFResMgrI::" + name,
      "objList",
      {"0", "0", "0", ""},
      std::move(batches),
      [call = std::move(call)] { return appended(std::list<ResourceDn>(1), call); }};
  operation.before = {earlier<ResourceDn>()};
  operation.throws = {kLogicError};
  return operation;
}

// As many names as need two requests.
std::vector<std::string> manyNames(const LabelKind& kind) {
  std::vector<std::string> names;
  for (int number = 0; number <= 100; ++number) names.push_back(nameOf(kind, number));
  return names;
}

std::map<int, std::string> mixedNames() {
  std::map<int, std::string> names;
  for (const LabelKind* kind : {&kElements, &kFrames, &kSlots, &kCards, &kPorts}) {
    names.emplace(static_cast<int>(names.size()), nameOf(*kind, 1));
  }
  return names;
}

void addLabels(std::vector<RestOperation>& all) {
  for (const LabelKind* kind : {&kPorts, &kCards, &kSlots, &kFrames, &kElements}) {
    all.push_back(labelOperation(
        kind->operation, {batch(*kind, 0), batch(*kind, 100)},
        [kind](std::list<ResourceDn>& out) { return kind->labels(out, manyNames(*kind)); }));
  }
  all.push_back(labelOperation("getResourceLabelsByRest", {batch(kCards, 0), batch(kCards, 100)},
                               [](std::list<ResourceDn>& out) {
                                 return EMFResMgrI::getResourceLabelsByRest(out, manyNames(kCards),
                                                                            "CARD");
                               }));
  // Grouped by kind, whatever the order of the names.
  const std::vector<Exchange> mixed = {batch(kPorts, 1), batch(kCards, 1), batch(kSlots, 1),
                                       batch(kFrames, 1), batch(kElements, 1)};
  all.push_back(labelOperation("getResourceLabels", mixed, [](std::list<ResourceDn>& out) {
    return EMFResMgrI::getResourceLabels(out, mixedNames());
  }));
  all.back().keepsOrder = false;
  all.push_back(labelOperation("getResourceLabelsEx", mixed, [](std::list<ResourceDn>& out) {
    return EMFResMgrI::getResourceLabelsEx(out, mixedNames());
  }));
  all.back().keepsOrder = false;
}

// Labels are written in place: a frame and a daughter card over REST, a card from its name alone.
void addAccessLabels(std::vector<RestOperation>& all) {
  const std::string frame = "NE=12,FR=0";
  const std::string daughter = "NE=12,FR=0,S=1,SS=1,SC=1";
  const auto answer = [](const std::string& fdn, const std::string& name) {
    return R"({"objList":[{"nativeId":")" + fdn + R"(","name":")" + name +
           R"("}],"isTruncated":false,"marker":""})";
  };
  RestOperation labels{
      "EMFResMgrI::getAccessResourceLabels",
      "objList",
      {"0", "0", "0", ""},
      {{answer(frame, "Frame 0"), {"0|" + frame + "|Frame 0"}, true, {"0|" + frame + "|old"}},
       {answer(daughter, "Card"), {"1|" + daughter + "|Card"}, true, {"1|" + daughter + "|old"}}},
      [frame, daughter] {
        std::map<int, ResourceEightLoc> places;
        for (const std::string& fdn : {frame, daughter, std::string("NE=12,FR=1,S=2,CP=1")}) {
          ResourceEightLoc& place = places[static_cast<int>(places.size())];
          place.fdn = fdn;
          place.label = "old";
        }
        return appended(places, EMFResMgrI::getAccessResourceLabels);
      }};
  for (Exchange& exchange : labels.exchanges) exchange.failureLine = "getAccessResource is failed";
  labels.allOrNone = true;  // when something is thrown
  labels.closing = {"2|NE=12,FR=1,S=2,CP=1|Frame:1/Slot:2"};
  labels.throws = {kLogicError};
  labels.keepsOrder = false;
  all.push_back(labels);
}

}  // namespace

void addLabelOperations(std::vector<RestOperation>& all) {
  addLabels(all);
  addAccessLabels(all);
}

}  // namespace emf::faults
