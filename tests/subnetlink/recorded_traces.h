// The traces of a computation as short texts: "link Region/City", "missing S9".
//
// Thread-safety: thread-compatible.
#pragma once

#include <string>
#include <vector>

#include "linktraces.h"

namespace emf::test {

class RecordedTraces : public LinkTraces {
 public:
  void missingSubnet(const std::string& key) override { events.push_back("missing " + key); }
  void repeatedSubnet(const std::string& key) override { events.push_back("repeated " + key); }
  void subnetLink(const std::string& link) override { events.push_back("link " + link); }
  void notRealElement(const std::string& id) override { events.push_back("not real " + id); }
  void notOriginElement(const std::string& id) override { events.push_back("not origin " + id); }
  void noOriginField() override { events.push_back("no origin field"); }
  void missingParent(const std::string& id, unsigned long number,
                     const std::string& parentKey) override {
    events.push_back("no parent " + parentKey + " of " + id + " " + std::to_string(number));
  }

  std::vector<std::string> events;
};

}  // namespace emf::test
