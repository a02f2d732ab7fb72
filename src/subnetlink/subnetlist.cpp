#include "subnetlist.h"

namespace emf {

std::string subnetKey(const std::string& identity) { return "S" + identity; }

std::string textMember(const Json::Value& object, const char* name) {
  return object[name].asString();
}

std::string JsonSubnets::key(std::size_t index) const {
  return subnetKey(textMember(subnets_[index], "objId"));
}

std::string JsonSubnets::label(std::size_t index) const {
  return textMember(subnets_[index], "label");
}

std::string JsonSubnets::parentKey(std::size_t index) const {
  return subnetKey(textMember(subnets_[index], "parentId"));
}

}  // namespace emf
