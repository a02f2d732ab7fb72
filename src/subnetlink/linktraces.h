// What the computation of the links has to say, in the order in which it says it.
//
// Thread-safety: as the implementation.
#pragma once

#include <string>

namespace emf {

class LinkTraces {
 public:
  virtual ~LinkTraces() = default;

  // A chain of subnets ends below a parent that is not in the list.
  virtual void missingSubnet(const std::string& key) = 0;
  // A chain of subnets comes back to this one and ends there.
  virtual void repeatedSubnet(const std::string& key) = 0;
  // The finished link of a subnet.
  virtual void subnetLink(const std::string& link) = 0;

  virtual void notRealElement(const std::string& nativeId) = 0;
  virtual void notOriginElement(const std::string& nativeId) = 0;
  virtual void noOriginField() = 0;
  // The device's subnet has no link.
  virtual void missingParent(const std::string& nativeId, unsigned long number,
                             const std::string& parentKey) = 0;
};

}  // namespace emf
