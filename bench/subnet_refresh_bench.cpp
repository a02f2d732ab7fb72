// What the in-memory part of a subnet-link refresh costs: time against a tenth of the network, peak
// memory, and how long lookups wait meanwhile. Five elements to a subnet, subnets ten deep, listed
// parents first (best order) or deepest first (worst order).
#include <benchmark/benchmark.h>
#include <json/reader.h>
#include <json/value.h>
#include <json/writer.h>
#include <malloc.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <map>
#include <memory>
#include <new>
#include <string>
#include <thread>
#include <vector>

#include "paired.h"
#include "simulated_network.h"
#include "submapbufmgr.h"

namespace {

// Bytes of the heap in use by way of operator new, and the most there were since the last mark.
std::atomic<std::int64_t> heapBytes{0};
std::atomic<std::int64_t> heapPeak{0};

void* allocate(std::size_t size) {
  void* const block = std::malloc(size);
  if (block == nullptr) throw std::bad_alloc();
  const auto usable = static_cast<std::int64_t>(malloc_usable_size(block));
  const std::int64_t now = heapBytes.fetch_add(usable, std::memory_order_relaxed) + usable;
  if (now > heapPeak.load(std::memory_order_relaxed)) heapPeak = now;
  return block;
}

void release(void* block) {
  heapBytes.fetch_sub(static_cast<std::int64_t>(malloc_usable_size(block)),
                      std::memory_order_relaxed);
  std::free(block);
}

}  // namespace

void* operator new(std::size_t size) { return allocate(size); }
void operator delete(void* block) noexcept { release(block); }
void operator delete(void* block, std::size_t) noexcept { release(block); }

namespace {

constexpr std::size_t kElementsInSubnet = 5;
constexpr std::size_t kDepth = 10;
constexpr int kTenths = 10;

enum Order : std::int64_t { kParentsFirst, kDeepestFirst };

struct Network {
  Network(std::size_t elements, Order order) {
    const std::size_t count = elements / kElementsInSubnet;
    const std::size_t chains = count / kDepth;
    for (std::size_t place = 0; place < count; ++place) {
      const std::size_t own = order == kDeepestFirst ? count - 1 - place : place;
      Json::Value subnet(Json::objectValue);
      subnet["objId"] = std::to_string(own);
      subnet["label"] = "subnet " + std::to_string(own);
      subnet["parentId"] = std::to_string(own < chains ? own : own - chains);
      subnets.push_back(std::move(subnet));
    }
    for (std::size_t element = 0; element < elements; ++element) {
      Json::Value node(Json::objectValue);
      node["nativeId"] = "NE=" + std::to_string(element + 2);
      node["origin"] = "1";
      node["parentId"] = std::to_string(element % count);
      nodes.push_back(std::move(node));
    }
  }

  void refresh() const {
    SubmapBufMgr::Instance()->refreshSubnetNameLink(subnets);
    SubmapBufMgr::Instance()->refreshDeviceSubnetNameLink(nodes);
  }

  std::vector<Json::Value> subnets;
  std::vector<Json::Value> nodes;
};

// A second refresh, as in a running agent: over the maps of the first.
double peakMegabytes(const Network& network) {
  SubmapBufMgr::Destroy();
  const std::int64_t before = heapBytes;
  network.refresh();
  heapPeak = heapBytes.load();
  network.refresh();
  return static_cast<double>(heapPeak - before) / 1e6;
}

// `growth` is the factor over a tenth of the elements, in processor time: the fastest run of each,
// taken in turns, since what else the machine does only ever adds to a run.
template <class Whole, class Tenth>
void measureGrowth(benchmark::State& state, Whole whole, Tenth tenth) {
  double fastestWhole = std::numeric_limits<double>::max();
  double fastestTenth = fastestWhole;
  for (auto _ : state) {
    whole();  // over the maps of the same network, as in a running agent
    const Cost cost = costOf(whole);
    fastestWhole = std::min(fastestWhole, cost.cpuSeconds);
    tenth();
    fastestTenth = std::min(fastestTenth, costOf(tenth).cpuSeconds);
    state.SetIterationTime(cost.seconds);
  }
  state.counters["growth"] = fastestWhole / fastestTenth;
  state.counters["fastest_ms"] = fastestWhole * 1e3;
}

// The objects lie in memory, as after the read.
void refresh(benchmark::State& state) {
  const auto elements = static_cast<std::size_t>(state.range(0));
  const auto order = static_cast<Order>(state.range(1));
  const Network whole(elements, order);
  const Network tenth(elements / 10, order);
  measureGrowth(
      state, [&] { whole.refresh(); }, [&] { tenth.refresh(); });
  state.counters["peak_MB"] = peakMegabytes(whole);
  SubmapBufMgr::Destroy();
}
BENCHMARK(refresh)
    ->ArgNames({"elements", "deepest_first"})
    ->ArgsProduct({{1000, 10000, 100000}, {kParentsFirst, kDeepestFirst}})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

// The same against ten networks of a tenth each that lie in memory together: both sides then meet
// their objects where a refresh meets them half an hour after the last one, in memory and not in
// the processor's caches. What is left is the growth of the work.
void refreshBesideTenths(benchmark::State& state) {
  const auto elements = static_cast<std::size_t>(state.range(0));
  const auto order = static_cast<Order>(state.range(1));
  const Network whole(elements, order);
  std::vector<std::unique_ptr<Network>> tenths;
  for (int i = 0; i < kTenths; ++i) {
    tenths.push_back(std::make_unique<Network>(elements / kTenths, order));
  }
  double fastestWhole = std::numeric_limits<double>::max();
  double fastestTenths = fastestWhole;
  const auto refreshWhole = [&] { whole.refresh(); };
  const auto refreshTenths = [&] {
    for (const auto& tenth : tenths) tenth->refresh();
  };
  for (auto _ : state) {
    refreshWhole();
    const Cost cost = costOf(refreshWhole);
    fastestWhole = std::min(fastestWhole, cost.cpuSeconds);
    tenths.back()->refresh();
    fastestTenths = std::min(fastestTenths, costOf(refreshTenths).cpuSeconds);
    state.SetIterationTime(cost.seconds);
  }
  state.counters["growth"] = kTenths * fastestWhole / fastestTenths;
  SubmapBufMgr::Destroy();
}
BENCHMARK(refreshBesideTenths)
    ->ArgNames({"elements", "deepest_first"})
    ->ArgsProduct({{100000}, {kParentsFirst, kDeepestFirst}})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

// The objects' own cost, which no computation of links can be without: the least that reads every
// member once and fills a map with as many texts.
void bareReadAndFill(benchmark::State& state) {
  const auto elements = static_cast<std::size_t>(state.range(0));
  const Network whole(elements, kParentsFirst);
  const Network tenth(elements / 10, kParentsFirst);
  const std::string link(100, 'x');
  const auto pass = [&link](const Network& network, std::map<std::size_t, std::string>& filled) {
    filled.clear();
    std::size_t length = 0;
    for (const Json::Value& node : network.nodes) {
      for (const char* name : {"nativeId", "origin", "parentId"}) {
        length += node[name].asString().size();
      }
      filled.emplace_hint(filled.end(), filled.size(), link);
    }
    benchmark::DoNotOptimize(length);
  };
  std::map<std::size_t, std::string> ofWhole;
  std::map<std::size_t, std::string> ofTenth;
  measureGrowth(
      state, [&] { pass(whole, ofWhole); }, [&] { pass(tenth, ofTenth); });
}
BENCHMARK(bareReadAndFill)
    ->ArgName("elements")
    ->RangeMultiplier(10)
    ->Range(1000, 100000)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

// With the parsing of the answers: pages of 200 objects, as the service sends them.
class Pages {
 public:
  explicit Pages(const Network& network)
      : subnets_(render(network.subnets)), nodes_(render(network.nodes)) {}

  void refresh() const {
    const std::vector<Json::Value> nodes = parse(nodes_);
    const std::vector<Json::Value> subnets = parse(subnets_);
    SubmapBufMgr::Instance()->refreshSubnetNameLink(subnets);
    SubmapBufMgr::Instance()->refreshDeviceSubnetNameLink(nodes);
  }

 private:
  static constexpr std::size_t kObjects = 200;

  static std::vector<std::string> render(const std::vector<Json::Value>& objects) {
    Json::StreamWriterBuilder builder;
    builder["indentation"] = "";
    std::vector<std::string> pages;
    for (std::size_t first = 0; first < objects.size(); first += kObjects) {
      Json::Value page(Json::arrayValue);
      const std::size_t end = std::min(first + kObjects, objects.size());
      for (std::size_t place = first; place < end; ++place) page.append(objects[place]);
      pages.push_back(Json::writeString(builder, page));
    }
    return pages;
  }

  static std::vector<Json::Value> parse(const std::vector<std::string>& pages) {
    const std::unique_ptr<Json::CharReader> reader(Json::CharReaderBuilder().newCharReader());
    std::vector<Json::Value> objects;
    for (const std::string& text : pages) {
      Json::Value page;
      reader->parse(text.data(), text.data() + text.size(), &page, nullptr);
      for (Json::Value& object : page) objects.push_back(std::move(object));
    }
    return objects;
  }

  std::vector<std::string> subnets_;
  std::vector<std::string> nodes_;
};

void parseAndRefresh(benchmark::State& state) {
  const auto elements = static_cast<std::size_t>(state.range(0));
  const auto order = static_cast<Order>(state.range(1));
  const Pages whole(Network(elements, order));
  const Pages tenth(Network(elements / 10, order));
  measureGrowth(
      state, [&] { whole.refresh(); }, [&] { tenth.refresh(); });
  SubmapBufMgr::Destroy();
}
BENCHMARK(parseAndRefresh)
    ->ArgNames({"elements", "deepest_first"})
    ->ArgsProduct({{10000, 100000}, {kParentsFirst, kDeepestFirst}})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

// Five elements to a subnet, subnets ten deep below their own roots, deepest first.
std::string deepTree(int elements) {
  const std::string count = std::to_string(elements / static_cast<int>(kElementsInSubnet));
  const std::string chains =
      std::to_string(elements / static_cast<int>(kElementsInSubnet * kDepth));
  return "PRAGMA foreign_keys = OFF; DELETE FROM subnet WHERE obj_id <> '102';"
         "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i + 1 < " +
         count + ") INSERT INTO subnet SELECT 'd' || i, 'd' || (CASE WHEN i < " + chains +
         " THEN i ELSE i - " + chains +
         " END), 1000000 - i, '/d' || i, 'Subnet ' || i, 200, 2, '/icons/subnet.png', '', 0, 0 "
         "FROM n;"
         "UPDATE device SET origin = 1, subnet_id = 'd' || (dev_id % " +
         count + ")";
}

// The whole of a refresh, as the task does it: every page over loopback from the simulator, parsed,
// and both maps rebuilt. `growth` is that of the wall time, `cpu_growth` that of this process.
void wholeRefresh(benchmark::State& state) {
  constexpr int kElements = 100000;
  const SimulatedNetwork whole(kElements, deepTree(kElements));
  const SimulatedNetwork tenth(kElements / kTenths, deepTree(kElements / kTenths));
  const auto refresh = [] { SubmapBufMgr::Instance()->QuerySubnetAndNodesInfo(); };
  const auto fastest = [&refresh](const SimulatedNetwork& network, Cost& least) {
    network.select();
    refresh();
    const Cost cost = costOf(refresh);
    least.seconds = std::min(least.seconds, cost.seconds);
    least.cpuSeconds = std::min(least.cpuSeconds, cost.cpuSeconds);
    return cost.seconds;
  };
  constexpr double kNever = std::numeric_limits<double>::max();
  Cost ofWhole = {kNever, kNever};
  Cost ofTenth = {kNever, kNever};
  for (auto _ : state) {
    state.SetIterationTime(fastest(whole, ofWhole));
    std::string link;
    SubmapBufMgr::Instance()->GetSubmapName(link, kElements);
    if (link.empty()) state.SkipWithError("the last element has no link");
    fastest(tenth, ofTenth);
  }
  state.counters["growth"] = ofWhole.seconds / ofTenth.seconds;
  state.counters["cpu_growth"] = ofWhole.cpuSeconds / ofTenth.cpuSeconds;
  SubmapBufMgr::Destroy();
}
BENCHMARK(wholeRefresh)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(7);

// The longest of all lookups on two threads while a network of 100,000 refreshes over and over.
void longestLookup(benchmark::State& state) {
  const Network network(100000, kDeepestFirst);
  network.refresh();
  std::atomic<bool> done{false};
  std::atomic<std::int64_t> longest{0};
  const auto look = [&](unsigned long device) {
    std::string link;
    while (!done) {
      device = device % 100000 + 2;
      const auto start = std::chrono::steady_clock::now();
      SubmapBufMgr::Instance()->GetSubmapName(link, device);
      const std::int64_t waited = (std::chrono::steady_clock::now() - start).count();
      if (waited > longest.load(std::memory_order_relaxed)) longest = waited;
    }
  };
  std::thread first(look, 1UL);
  std::thread second(look, 50000UL);
  for (auto _ : state) network.refresh();
  done = true;
  first.join();
  second.join();
  state.counters["longest_ms"] = static_cast<double>(longest) / 1e6;
  SubmapBufMgr::Destroy();
}
BENCHMARK(longestLookup)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
