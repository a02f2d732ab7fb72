#include "plain_links.h"

#include <algorithm>
#include <cstdlib>

namespace emf::test {
namespace {

std::string text(const Json::Value& object, const char* name) { return object[name].asString(); }
std::string keyOf(const Json::Value& object) { return "S" + text(object, "objId"); }
std::string parentKeyOf(const Json::Value& object) { return "S" + text(object, "parentId"); }

const Json::Value* firstWithKey(const std::string& key, const Objects& subnets) {
  for (const Json::Value& object : subnets) {
    if (keyOf(object) == key) return &object;
  }
  return nullptr;
}

bool holds(const std::vector<std::string>& keys, const std::string& key) {
  return std::find(keys.begin(), keys.end(), key) != keys.end();
}

std::string joined(const std::string& prefix, const std::string& label) {
  return prefix.empty() ? label : prefix + "/" + label;
}

}  // namespace

void PlainLinks::refreshSubnets(const Objects& subnets) {
  subnetLinks.clear();
  for (const Json::Value& object : subnets) {
    const std::string key = keyOf(object);
    if (subnetLinks.count(key) != 0) continue;
    const std::string label = text(object, "label");
    const std::string parentKey = parentKeyOf(object);
    chain_ = {key};
    std::string prefix;
    if (key != parentKey) {
      inCycle_ = isInCycle(key, subnets);
      prefix = parentLink(parentKey, subnets);
    }
    const std::string link = joined(prefix, label);
    traces_.subnetLink(link);
    subnetLinks[key] = link;
  }
}

std::string PlainLinks::parentLink(const std::string& key, const Objects& subnets) {
  // On a cycle the finished links hold the labels of this chain already.
  const auto finished = subnetLinks.find(key);
  if (!inCycle_ && finished != subnetLinks.end()) return finished->second;
  if (holds(chain_, key)) {
    traces_.repeatedSubnet(key);
    return std::string();
  }
  const Json::Value* object = firstWithKey(key, subnets);
  if (object == nullptr) {
    traces_.missingSubnet(key);
    return std::string();
  }
  chain_.push_back(key);
  inCycle_ = inCycle_ || isInCycle(key, subnets);
  const std::string label = text(*object, "label");
  const std::string parentKey = parentKeyOf(*object);
  return joined(key == parentKey ? std::string() : parentLink(parentKey, subnets), label);
}

// Objects that cannot be read are the walk's to meet, not this look-ahead's.
bool PlainLinks::isInCycle(const std::string& key, const Objects& subnets) {
  std::vector<std::string> seen;
  try {
    for (std::string at = key; !holds(seen, at);) {
      seen.push_back(at);
      const Json::Value* object = firstWithKey(at, subnets);
      if (object == nullptr) return false;
      const std::string parentKey = parentKeyOf(*object);
      if (parentKey == at) return false;
      if (parentKey == key) return true;
      at = parentKey;
    }
  } catch (const Json::Exception&) {
  }
  return false;
}

void PlainLinks::refreshDevices(const Objects& nodes) {
  deviceLinks.clear();
  for (const Json::Value& object : nodes) {
    const std::string nativeId = text(object, "nativeId");
    const std::size_t element = nativeId.find("NE=");
    if (element == std::string::npos || nativeId.find(',', element) != std::string::npos) {
      traces_.notRealElement(nativeId);
      continue;
    }
    if (static_cast<int>(std::strtol(text(object, "origin").c_str(), nullptr, 10)) != 1) {
      traces_.notOriginElement(nativeId);
      continue;
    }
    const std::string behind = nativeId.substr(nativeId.find('=') + 1);
    const int cut = static_cast<int>(std::strtol(behind.c_str(), nullptr, 10));
    const unsigned long number = static_cast<unsigned long>(static_cast<long>(cut));
    const std::string parentKey = parentKeyOf(object);
    if (subnetLinks.count(parentKey) == 0) {
      traces_.missingParent(nativeId, number, parentKey);
      continue;
    }
    deviceLinks[number] = subnetLinks[parentKey];
  }
}

}  // namespace emf::test
