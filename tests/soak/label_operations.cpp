// Labels of resources by their names.
#include <algorithm>
#include <list>
#include <map>
#include <set>

#include "emfresinterface.h"
#include "operation.h"

namespace soak {

namespace {

// More than two batches of a kind.
constexpr std::size_t kMostNames = 300;

// The kinds in the order in which a mixed set is answered.
enum Kind { kPort, kCard, kSlot, kFrame, kElement, kKinds };
constexpr const char* kWords[kKinds] = {"PORT", "CARD", "SLOT", "FRAME", "NE"};

Kind kindOf(std::int64_t mainType) {
  switch (mainType) {
    case 6:
      return kPort;
    case 20:
    case 21:
      return kCard;
    case 4:
    case 5:
      return kSlot;
    case 3:
      return kFrame;
    default:
      return kElement;
  }
}

struct Named {
  std::string dn;
  std::string row;
  Kind kind;
};

Named named(const Content& content) {
  return {content.dn, joined(content.dn, content.name, content.mainType, content.subType),
          kindOf(content.mainType)};
}

Named named(const Element& element, const Network& network) {
  const std::string dn = "NE=" + std::to_string(element.id);
  // The row of a managed element is its path, compatible id, name, main and sub type.
  const auto index = static_cast<std::size_t>(&element - network.elements.data());
  const std::string& row = (*network.managedElements)[index];
  return {dn, joined(dn, element.name, 1, row.substr(row.rfind('|') + 1)), kElement};
}

// Different names of resources and elements.
std::vector<Named> sample(Context& context) {
  std::map<std::string, Named> chosen;
  const std::size_t count = 1 + context.below(kMostNames);
  const EquippedElement& element = context.pick(context.network.equipped);
  for (std::size_t i = 0; i < count; ++i) {
    Named one = context.oneIn(5) ? named(context.pick(context.network.elements), context.network)
                                 : named(context.pick(element.contents));
    chosen.emplace(one.dn, one);
  }
  std::vector<Named> names;
  for (auto& entry : chosen) names.push_back(std::move(entry.second));
  std::shuffle(names.begin(), names.end(), context.random);
  return names;
}

// Batches that fail are missing.
Expected labelsOf(std::vector<Named> names) {
  std::stable_sort(names.begin(), names.end(),
                   [](const Named& left, const Named& right) { return left.kind < right.kind; });
  Rows rows;
  for (const Named& name : names) rows.push_back(name.row);
  Expected expected(0, std::move(rows));
  expected.orElse("result 0", Part::kSome);
  return expected;
}

template <std::int64_t (*operation)(std::list<ResourceDn>&, const std::map<int, std::string>&)>
Verdict labelsOfMixed(Context& context) {
  const std::vector<Named> names = sample(context);
  std::map<int, std::string> dns;
  for (const Named& name : names) dns.emplace(static_cast<int>(dns.size()), name.dn);
  std::list<ResourceDn> labels;
  return context.check([&] { return operation(labels, dns); }, [&] { return rowsOf(labels); },
                       labelsOf(names));
}

using OfKind = std::int64_t (*)(std::list<ResourceDn>&, const std::vector<std::string>&);

template <Kind kind>
std::int64_t byWord(std::list<ResourceDn>& out, const std::vector<std::string>& names) {
  return EMFResMgrI::getResourceLabelsByRest(out, names, kWords[kind]);
}

template <OfKind operation, Kind kind>
Verdict labelsOfKind(Context& context) {
  std::vector<Named> names = sample(context);
  names.erase(std::remove_if(names.begin(), names.end(),
                             [](const Named& name) { return name.kind != kind; }),
              names.end());
  std::vector<std::string> dns;
  for (const Named& name : names) dns.push_back(name.dn);
  std::list<ResourceDn> labels;
  return context.check([&] { return operation(labels, dns); }, [&] { return rowsOf(labels); },
                       labelsOf(std::move(names)));
}

Verdict getAllNeResLabel(Context& context) {
  std::map<std::string, std::string> labels;
  Expected expected(0, context.network.labels);
  expected.orElse("result 0", Part::kNothing);
  return context.check([&] { return EMFResMgrI::getAllNeResLabel(labels); },
                       [&] { return rowsOf(labels); }, expected);
}

// What the service labels: frames and daughter cards.
bool isAsked(const Content& content) { return content.mainType == 3 || content.mainType == 21; }

// Labels that could not be read stay empty; those out of the name alone are always there.
Verdict getAccessResourceLabels(Context& context) {
  const EquippedElement& element = context.pick(context.network.equipped);
  std::map<int, ResourceEightLoc> locations;
  Rows rows;
  for (const Content& content : element.contents) {
    if (!isAsked(content) || context.oneIn(3)) continue;
    locations[static_cast<int>(locations.size())].fdn = content.dn;
    rows.push_back(joined(content.dn, content.name));
  }
  const std::string port = "NE=2,FR=0,S=3,PP=0-3-5";
  locations[static_cast<int>(locations.size())].fdn = port;
  rows.push_back(port + "|Frame:0/Slot:3/Port:5");
  Expected expected(0, std::move(rows));
  expected.orElse("result 0", Part::kSome);
  const auto labelled = [&] {
    Rows found;
    for (const auto& [position, location] : locations) {
      if (!location.label.empty()) found.push_back(joined(location.fdn, location.label));
    }
    return found;
  };
  return context.check([&] { return EMFResMgrI::getAccessResourceLabels(locations); }, labelled,
                       expected);
}

}  // namespace

void addLabelOperations(std::vector<Operation>& all) {
  using R = EMFResMgrI;
  all.insert(
      all.end(),
      {{"EMFResMgrI::getResourceLabels", 5, labelsOfMixed<R::getResourceLabels>},
       {"EMFResMgrI::getResourceLabelsEx", 3, labelsOfMixed<R::getResourceLabelsEx>},
       {"EMFResMgrI::getResourceLabelsByRest (PORT)", 2, labelsOfKind<byWord<kPort>, kPort>},
       {"EMFResMgrI::getResourceLabelsByRest (NE)", 2, labelsOfKind<byWord<kElement>, kElement>},
       {"EMFResMgrI::getPortResourceLabelsByRest", 2,
        labelsOfKind<R::getPortResourceLabelsByRest, kPort>},
       {"EMFResMgrI::getCardResourceLabelsByRest", 2,
        labelsOfKind<R::getCardResourceLabelsByRest, kCard>},
       {"EMFResMgrI::getSlotResourceLabelsByRest", 2,
        labelsOfKind<R::getSlotResourceLabelsByRest, kSlot>},
       {"EMFResMgrI::getFrameResourceLabelsByRest", 2,
        labelsOfKind<R::getFrameResourceLabelsByRest, kFrame>},
       {"EMFResMgrI::getNEResourceLabelsByRest", 2,
        labelsOfKind<R::getNEResourceLabelsByRest, kElement>},
       {"EMFResMgrI::getAllNeResLabel", 1, getAllNeResLabel},
       {"EMFResMgrI::getAccessResourceLabels", 3, getAccessResourceLabels}});
}

}  // namespace soak
