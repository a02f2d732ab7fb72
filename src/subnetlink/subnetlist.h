// One face over the two kinds of subnet lists: topology node objects and southbound records.
//
// Thread-safety: immutable views; the list must outlive its view. Reading a JSON member of a type
// that has no text form raises Json::LogicError.
#pragma once

#include <json/value.h>

#include <cstddef>
#include <string>
#include <vector>

#include "southrecords.h"

namespace emf {

class SubnetList {
 public:
  virtual ~SubnetList() = default;
  virtual std::size_t size() const = 0;
  virtual std::string key(std::size_t index) const = 0;
  virtual std::string label(std::size_t index) const = 0;
  virtual std::string parentKey(std::size_t index) const = 0;
};

class JsonSubnets : public SubnetList {
 public:
  explicit JsonSubnets(const std::vector<Json::Value>& subnets) : subnets_(subnets) {}
  std::size_t size() const override { return subnets_.size(); }
  std::string key(std::size_t index) const override;
  std::string label(std::size_t index) const override;
  std::string parentKey(std::size_t index) const override;

 private:
  const std::vector<Json::Value>& subnets_;
};

class RecordSubnets : public SubnetList {
 public:
  explicit RecordSubnets(const std::vector<SouthSubnet>& subnets) : subnets_(subnets) {}
  std::size_t size() const override { return subnets_.size(); }
  std::string key(std::size_t index) const override { return subnets_[index].id; }
  std::string label(std::size_t index) const override { return subnets_[index].label; }
  std::string parentKey(std::size_t index) const override { return subnets_[index].parentId; }

 private:
  const std::vector<SouthSubnet>& subnets_;
};

// The key of the subnet with that identity.
std::string subnetKey(const std::string& identity);
// A member as text, empty when it is missing.
std::string textMember(const Json::Value& object, const char* name);

}  // namespace emf
