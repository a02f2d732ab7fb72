// The links as the plain algorithm computes them: recursion, a scan of the whole list at each
// step, nothing remembered but the finished links. What the product is compared with.
//
// Thread-safety: thread-compatible. Lets out what reading a member raises.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "linktraces.h"
#include "topology_objects.h"

namespace emf::test {

class PlainLinks {
 public:
  explicit PlainLinks(LinkTraces& traces) : traces_(traces) {}

  void refreshSubnets(const Objects& subnets);
  void refreshDevices(const Objects& nodes);

  std::map<std::string, std::string> subnetLinks;
  std::map<unsigned long, std::string> deviceLinks;

 private:
  std::string parentLink(const std::string& key, const Objects& subnets);
  static bool isInCycle(const std::string& key, const Objects& subnets);

  LinkTraces& traces_;
  std::vector<std::string> chain_;  // from the subnet whose turn it is upwards
  bool inCycle_ = false;            // the walk has come to a subnet that is its own ancestor
};

}  // namespace emf::test
