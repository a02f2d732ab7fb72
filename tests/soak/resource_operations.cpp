// Elements, what they contain, where they stand, who keeps them, and their attributes.
#include <algorithm>
#include <list>

#include "emfresinterface.h"
#include "operation.h"
#include "resource_ids.h"

namespace soak {

using systemtest::iidOf;

namespace {

constexpr std::int64_t kReadFailed = 0x411800BA;
constexpr std::int64_t kUnknownId = 90'000'000;
const std::string kFailure = "result -1";

Verdict getAllManagedElements(Context& context) {
  std::list<Resource> elements;
  Expected expected(0, context.network.managed);
  expected.partsOf(context.network.managedElements)
      .orElse("result " + std::to_string(kReadFailed), Part::kBeginning)
      .orSpoilt(Part::kBeginning);
  return context.check([&] { return EMFResMgrI::getAllManagedElements(elements); },
                       [&] { return rowsOf(elements); }, expected);
}

// What an operation has to give of an element's contents.
template <class Wanted>
Expected contentsOf(const EquippedElement& element, const Wanted& wanted) {
  Rows rows;
  for (const Content& content : element.contents) {
    if (wanted(content)) rows.push_back(content.row);
  }
  Expected expected(0, std::move(rows));
  expected.orElse(kFailure, Part::kBeginning);
  return expected;
}

Verdict getContainedByMainType(Context& context) {
  const EquippedElement& element = context.pick(context.network.equipped);
  const std::int64_t type = context.pick(element.contents).mainType;
  std::list<Resource> contents;
  return context.check(
      [&] { return EMFResMgrI::getContainedResourceByMainType({element.id}, type, contents); },
      [&] { return rowsOf(contents); },
      contentsOf(element, [&](const Content& content) { return content.mainType == type; }));
}

// Everything of a type below one frame, or whatever else holds others.
Verdict getContainedBelow(Context& context) {
  const EquippedElement& element = context.pick(context.network.equipped);
  const Content& start = context.pick(element.contents);
  const std::string& path = start.path;
  std::vector<std::int64_t> ids;
  for (std::size_t at = 0; at < path.size();) {
    ids.push_back(std::stoll(path.substr(at)));
    at = std::min(path.find('/', at), path.size() - 1) + 1;
  }
  const std::int64_t type = context.pick(element.contents).mainType;
  std::list<Resource> contents;
  return context.check(
      [&] { return EMFResMgrI::getContainedResourceByMainType(ids, type, contents); },
      [&] { return rowsOf(contents); }, contentsOf(element, [&](const Content& content) {
        const bool within = (content.path + "/").compare(0, path.size() + 1, path + "/") == 0;
        return within && content.mainType == type;
      }));
}

Verdict getContainedByType(Context& context) {
  const EquippedElement& element = context.pick(context.network.equipped);
  const Content& sample = context.pick(element.contents);
  std::list<Resource> contents;
  return context.check(
      [&] {
        return EMFResMgrI::getContainedResourceByType({element.id},
                                                      {sample.mainType, sample.subType}, contents);
      },
      [&] { return rowsOf(contents); }, contentsOf(element, [&](const Content& content) {
        return content.mainType == sample.mainType && content.subType == sample.subType;
      }));
}

Verdict getContainedOfNothing(Context& context) {
  std::list<Resource> contents;
  return context.check([&] { return EMFResMgrI::getContainedResourceByMainType({}, 3, contents); },
                       [&] { return rowsOf(contents); }, Expected(1, Rows{}));
}

Verdict getResourceLocation(Context& context) {
  const EquippedElement& element = context.pick(context.network.equipped);
  std::list<LocationInfo_> found;
  Expected expected(0, Rows{element.place});
  expected.orElse(kFailure, Part::kNothing).orSpoilt(Part::kNothing);
  const auto call = [&] {
    LocationInfo_ info;
    const std::int64_t result = EMFResMgrI::getResourceLocation(iidOf(element.id), info);
    if (result == 0) found.push_back(info);
    return result;
  };
  return context.check(
      call, [&] { return rowsOf(found); }, expected);
}

Verdict getResourceMaintenances(Context& context) {
  const EquippedElement& element = context.pick(context.network.equipped);
  std::list<MaintenanceInfo> keepers;
  Expected expected(0, Rows{element.keeper});
  expected.orElse(kFailure, Part::kNothing).orSpoilt(Part::kNothing);
  return context.check(
      [&] { return EMFResMgrI::getResourceMaintenances(iidOf(element.id), keepers); },
      [&] { return rowsOf(keepers); }, expected);
}

Verdict getResourceAttributes(Context& context) {
  const EquippedElement& element = context.pick(context.network.equipped);
  const bool unknown = context.oneIn(20);
  const std::int64_t id = unknown ? kUnknownId : element.id;
  std::list<ResourceAttribute> attributes;
  return context.check([&] { return EMFResMgrI::getResourceAttributes(iidOf(id), attributes); },
                       [&] { return rowsOf(attributes); },
                       Expected(unknown ? -1 : 0, unknown ? Rows{} : element.attributes));
}

Verdict getResMainType(Context& context) {
  std::list<NbiResMainType> types;
  Expected expected(0, context.network.mainTypes);
  expected.orElse(kFailure, Part::kNothing).orSpoilt(Part::kNothing);
  return context.check([&] { return EMFResMgrI::getResMainType(types); },
                       [&] { return rowsOf(types); }, expected);
}

}  // namespace

void addResourceOperations(std::vector<Operation>& all) {
  all.insert(all.end(),
             {{"EMFResMgrI::getAllManagedElements", 1, getAllManagedElements},
              {"EMFResMgrI::getContainedResourceByMainType", 5, getContainedByMainType},
              {"EMFResMgrI::getContainedResourceByMainType (path)", 5, getContainedBelow},
              {"EMFResMgrI::getContainedResourceByMainType (no id)", 1, getContainedOfNothing},
              {"EMFResMgrI::getContainedResourceByType", 5, getContainedByType},
              {"EMFResMgrI::getResourceLocation", 10, getResourceLocation},
              {"EMFResMgrI::getResourceMaintenances", 10, getResourceMaintenances},
              {"EMFResMgrI::getResourceAttributes", 10, getResourceAttributes},
              {"EMFResMgrI::getResMainType", 5, getResMainType}});
}

}  // namespace soak
