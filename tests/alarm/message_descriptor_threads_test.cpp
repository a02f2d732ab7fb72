// Descriptors are filled once a process: this program's first use of each comes from many threads.
#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <thread>
#include <vector>

#include "message_walk.h"

namespace emf::test {
namespace {

TEST(DescriptorThreads, FirstUseMayComeFromAnyThread) {
  constexpr int kThreads = 8;
  std::atomic<int> waiting{kThreads};
  std::array<std::string, kThreads> results;
  std::vector<std::thread> threads;
  for (int i = 0; i < kThreads; ++i) {
    threads.emplace_back([&, i] {
      --waiting;
      while (waiting > 0) std::this_thread::yield();
      Randomness random(7);
      AsnSvrToOtherQryResp reply;
      fill(reply, random);
      AsnSvrToOtherQryResp decoded;
      decode(decoded, encoded(reply));
      AsnOtherToSvrQryAlmEventReq request;
      fill(request, random);
      AsnOtherToSvrQryAlmEventReq copy;
      copy.Assign(request);
      results[static_cast<std::size_t>(i)] = xml(decoded) + xml(copy);
    });
  }
  for (std::thread& thread : threads) thread.join();
  for (const std::string& result : results) EXPECT_EQ(result, results[0]);
  EXPECT_EQ(AsnSvrToOtherQryRespResultStrc::descriptor().attributes().size(), 26U);
}

}  // namespace
}  // namespace emf::test
