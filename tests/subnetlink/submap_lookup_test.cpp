// Lookups and view queries on other threads while the task refreshes, with outages in between.
#include <atomic>
#include <set>
#include <thread>

#include "task_fixture.h"

namespace emf::test {
namespace {

using emf::doubles::platform;

constexpr int kDevices = 40;
constexpr std::size_t kRounds = 62;  // without an outage

// The network of one round; every link names the round.
void networkOf(std::size_t round, NodeService& service) {
  const std::string mark = std::to_string(round % 2);
  Objects subnets = {subnet("1", "Region" + mark, "1")};
  Objects nodes;
  for (int device = 2; device < kDevices; ++device) {
    const std::string id = std::to_string(device);
    subnets.push_back(subnet(id, "Site" + id, "1"));
    nodes.push_back(node("NE=" + id, "1", id));
  }
  service.subnets(subnets);
  service.nodes(nodes);
  service.outage(round % 5 == 3, round % 7 == 4);
}

class SubmapLookup : public TaskTest {};

TEST_F(SubmapLookup, EveryAnswerIsWholeDuringRefreshes) {
  std::atomic<bool> done{false};
  std::atomic<long> strange{0};
  std::atomic<long> found{0};
  SubmapBufMgr* const shared = SubmapBufMgr::Instance();
  const auto look = [&] {
    std::string text;
    while (!done) {
      for (unsigned long device = 2; device < kDevices; ++device) {
        shared->GetSubmapName(text, device);
        const std::string tail = "/Site" + std::to_string(device);
        found += !text.empty();
        strange += !text.empty() && text != "Region0" + tail && text != "Region1" + tail;
      }
      std::vector<Json::Value> objects;
      SubmapBufMgr::Instance()->QueryTopoView(Json::Value(), objects);
      strange += static_cast<long>(objects.size());
    }
  };
  networkOf(0, service);
  shared->InitBuf();
  std::thread first(look);
  std::thread second(look);
  for (std::size_t round = 1; round <= kRounds; ++round) {
    sleepGate().awaitSleeps(round);
    networkOf(round, service);
    if (round % 10 == 0) shared->InitBuf();
    sleepGate().wake();
  }
  sleepGate().awaitSleeps(kRounds + 1);
  EXPECT_EQ(link(2), "Region0/Site2");
  while (found == 0) std::this_thread::yield();
  done = true;
  first.join();
  second.join();
  EXPECT_EQ(strange, 0);
  sleepGate().open();
  EXPECT_EQ(shared->Stop(), 0);
}

}  // namespace
}  // namespace emf::test
