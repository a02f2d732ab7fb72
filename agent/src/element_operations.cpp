// Elements and what they contain.
#include <list>
#include <string>
#include <vector>

#include "emfresinterface.h"
#include "operations.h"
#include "orma/ident/resource_ids.h"
#include "resource_tree.h"

namespace ormaagent {

namespace {

// The ids from the element down.
Value pathOf(const Resource& resource) {
  std::string path;
  for (const std::int64_t id : resource.resIDs)
    path += (path.empty() ? "" : "/") + std::to_string(id);
  return path;
}

constexpr Column<Resource> kResource[] = {
    {"resIDs", pathOf},
    {"iid", fieldOf<&Resource::iid>},
    {"name", fieldOf<&Resource::name>},
    {"resMainTypeID", [](const Resource& row) -> Value { return row.type.resMainTypeID; }},
    {"resSubTypeID", [](const Resource& row) -> Value { return row.type.resSubTypeID; }},
};

constexpr Column<ResourceNode> kResourceNode[] = {
    {"name", [](const ResourceNode& node) -> Value { return node.resource.name; }},
    {"resMainTypeID",
     [](const ResourceNode& node) -> Value { return node.resource.type.resMainTypeID; }},
    {"resSubTypeID",
     [](const ResourceNode& node) -> Value { return node.resource.type.resSubTypeID; }},
    {"iid", [](const ResourceNode& node) -> Value { return node.resource.iid; }},
    {"resIDs", [](const ResourceNode& node) -> Value { return pathOf(node.resource); }},
};

// What an element can contain: frames, slots and those of daughter cards, cards, daughter cards,
// ports.
constexpr std::int64_t kContainedTypes[] = {3, 4, 5, 20, 21, 6};

std::vector<std::int64_t> idsOf(const Arguments& arguments) {
  std::vector<std::int64_t> ids;
  for (std::size_t i = 0; i < arguments.count(); ++i) {
    ids.push_back(arguments.number<std::int64_t>(i));
  }
  return ids;
}

// The element itself; nothing when there is none of that id.
std::list<Resource> elementOf(std::int64_t id) {
  std::list<ResourceDn> labels;
  EMFResMgrI::getNEResourceLabelsByRest(labels, {"NE=" + std::to_string(id)});
  std::list<Resource> element;
  if (labels.empty()) return element;
  element.emplace_back();
  element.front().resIDs = {id};
  element.front().iid = NS_UTIL::compat::ResID2IID(id);
  element.front().name = labels.front().label;
  element.front().type = labels.front().type;
  return element;
}

// That of an element without a label: 0 when there is no such element, -1 when it could not be
// read.
std::int64_t resultWithoutElement(std::int64_t id) {
  std::list<Resource> frames;
  const std::int64_t result =
      EMFResMgrI::getContainedResourceByMainType({id}, kContainedTypes[0], frames);
  return frames.empty() ? result : -1;
}

// Adds what the element contains; the first failure, or 0.
std::int64_t addContents(std::int64_t id, std::list<Resource>& resources) {
  std::int64_t result = 0;
  for (const std::int64_t mainType : kContainedTypes) {
    const std::int64_t failure =
        EMFResMgrI::getContainedResourceByMainType({id}, mainType, resources);
    if (result == 0) result = failure;
  }
  return result;
}

}  // namespace

Answer resElements(const Arguments&) {
  std::list<Resource> elements;
  const std::int64_t result = EMFResMgrI::getAllManagedElements(elements);
  return answerOf(result, kResource, elements);
}

// Each sub type is a query of its own.
Answer resContained(const Arguments& arguments) {
  const std::vector<std::int64_t> ids = idsOf(arguments);
  const auto mainType = arguments.numberOption<std::int64_t>("--main-type");
  const std::vector<std::string>& subTypes = arguments.repeatedOption("--sub-type");
  std::list<Resource> resources;
  std::int64_t result = 0;
  if (subTypes.empty()) {
    result = EMFResMgrI::getContainedResourceByMainType(ids, mainType, resources);
  }
  for (const std::string& subType : subTypes) {
    const ResTypeID type{mainType, parseNumber<std::int64_t>(subType).value()};
    const std::int64_t failure = EMFResMgrI::getContainedResourceByType(ids, type, resources);
    if (result == 0) result = failure;
  }
  return answerOf(result, kResource, resources);
}

Answer resTree(const Arguments& arguments) {
  const auto id = arguments.number<std::int64_t>(0);
  std::list<Resource> resources = elementOf(id);
  const std::int64_t result =
      resources.empty() ? resultWithoutElement(id) : addContents(id, resources);
  const std::vector<ResourceNode> tree = treeOf(resources);
  Answer answer = answerOf(result, kResourceNode, tree);
  for (const ResourceNode& node : tree) answer.depths.push_back(node.depth);
  return answer;
}

}  // namespace ormaagent
