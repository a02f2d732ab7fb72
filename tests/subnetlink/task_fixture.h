// The task with a network to read and its sleep in the test's hand.
#pragma once

#include <algorithm>
#include <string>

#include "node_service.h"
#include "sleep_gate.h"
#include "submap_fixture.h"

namespace emf::test {

constexpr char kActivated[] = "[SubmapBufMgr::InitBuf] SubmapBufMgr::svc is activated";
constexpr char kFirstTime[] = "SubmapBufMgr::svc Device to Submap buffer refresh the first time.";
constexpr std::size_t kRequestsPerRefresh = 2;

class TaskTest : public SubmapTest {
 protected:
  TaskTest() {
    sleepGate().close();
    service.subnets({subnet("1", "Region", "1"), subnet("2", "City", "1")});
    service.nodes({node("NE=12", "1", "2")});
  }
  ~TaskTest() override {
    sleepGate().open();
    buffer().Stop();
  }

  static std::size_t refreshes() {
    return emf::doubles::platform().rest.requests().size() / kRequestsPerRefresh;
  }
  static long traced(const std::string& text) {
    const auto texts = emf::doubles::platform().trace.texts();
    return std::count(texts.begin(), texts.end(), text);
  }

  NodeService service;
};

}  // namespace emf::test
