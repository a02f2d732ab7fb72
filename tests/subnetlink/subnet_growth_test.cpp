// What a refresh costs: reads of the list, counted, and the stack of the thread it runs on.
#include <gtest/gtest.h>
#include <pthread.h>

#include <functional>

#include "recorded_traces.h"
#include "subnetlinks.h"
#include "topology_objects.h"

namespace emf::test {
namespace {

constexpr std::size_t kDepth = 10;

// Chains of ten subnets; the list has every deepest one first, the roots last. Each read counts.
class CountedSubnets : public SubnetList {
 public:
  explicit CountedSubnets(std::size_t size) : size_(size) {}
  std::size_t size() const override { return size_; }
  std::string key(std::size_t index) const override {
    ++reads;
    return std::to_string(index);
  }
  std::string label(std::size_t index) const override {
    ++reads;
    return "label" + std::to_string(index);
  }
  std::string parentKey(std::size_t index) const override {
    ++reads;
    const std::size_t chains = size_ / kDepth;
    return std::to_string(index + chains < size_ ? index + chains : index);
  }

  mutable std::size_t reads = 0;

 private:
  std::size_t size_;
};

struct NoTraces : RecordedTraces {
  void subnetLink(const std::string&) override {}
};

std::size_t readsOf(std::size_t size) {
  const CountedSubnets list(size);
  std::map<std::string, std::string> links;
  NoTraces traces;
  SubnetLinks(list, traces).rebuild(links);
  EXPECT_EQ(links.size(), size);
  EXPECT_EQ(links["0"].substr(0, links["0"].find('/')), "label" + std::to_string(size - size / 10));
  return list.reads;
}

TEST(SubnetGrowth, EverySubnetIsReadOnceInTheWorstOrder) {
  constexpr std::size_t kMembers = 3;  // key, label, parent
  EXPECT_EQ(readsOf(2000), 2000 * kMembers);
  EXPECT_EQ(readsOf(20000), 20000 * kMembers);
}

// A chain below one root, deepest first.
std::vector<SouthSubnet> chain(std::size_t depth) {
  std::vector<SouthSubnet> records;
  for (std::size_t level = depth; level-- > 0;) {
    records.push_back({std::to_string(level), "a", std::to_string(level == 0 ? 0 : level - 1)});
  }
  return records;
}

void runOnSmallStack(std::function<void()> work) {
  pthread_attr_t attributes;
  ASSERT_EQ(pthread_attr_init(&attributes), 0);
  ASSERT_EQ(pthread_attr_setstacksize(&attributes, 256 * 1024), 0);
  pthread_t thread;
  const auto run = [](void* argument) -> void* {
    (*static_cast<std::function<void()>*>(argument))();
    return nullptr;
  };
  ASSERT_EQ(pthread_create(&thread, &attributes, run, &work), 0);
  pthread_join(thread, nullptr);
  pthread_attr_destroy(&attributes);
}

TEST(SubnetGrowth, ChainTenThousandDeepFitsASmallStack) {
  constexpr std::size_t kLevels = 10000;
  const std::vector<SouthSubnet> records = chain(kLevels);
  std::map<std::string, std::string> links;
  runOnSmallStack([&] {
    NoTraces traces;
    SubnetLinks(RecordSubnets(records), traces).rebuild(links);
  });
  std::string deepest = "a";
  for (std::size_t level = 1; level < kLevels; ++level) deepest += "/a";
  EXPECT_EQ(links.size(), kLevels);
  EXPECT_EQ(links[std::to_string(kLevels - 1)], deepest);
}

TEST(SubnetGrowth, CycleOfThousandsFitsASmallStack) {
  constexpr std::size_t kLevels = 3000;
  std::vector<SouthSubnet> records = chain(kLevels);
  records.back().parentId = std::to_string(kLevels - 1);
  std::map<std::string, std::string> links;
  runOnSmallStack([&] {
    NoTraces traces;
    SubnetLinks(RecordSubnets(records), traces).rebuild(links);
    EXPECT_EQ(traces.events.size(), kLevels);
  });
  for (const auto& entry : links) ASSERT_EQ(entry.second.size(), 2 * kLevels - 1) << entry.first;
}

// Labels that leave no trace in the links cost nothing more.
TEST(SubnetGrowth, ManyLevelsWithoutLabels) {
  constexpr std::size_t kLevels = 200000;
  std::vector<SouthSubnet> records = chain(kLevels);
  for (SouthSubnet& record : records) record.label.clear();
  std::map<std::string, std::string> links;
  NoTraces traces;
  SubnetLinks(RecordSubnets(records), traces).rebuild(links);
  EXPECT_EQ(links.size(), kLevels);
  records.back().parentId = std::to_string(kLevels - 1);
  links.clear();
  SubnetLinks(RecordSubnets(records), traces).rebuild(links);
  EXPECT_EQ(traces.events.size(), kLevels);
}

}  // namespace
}  // namespace emf::test
