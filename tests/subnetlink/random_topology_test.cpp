// The links against the plain algorithm, on random topologies.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <json/value.h>

#include <random>

#include "devicelinks.h"
#include "plain_links.h"
#include "recorded_traces.h"
#include "subnetlinks.h"
#include "topology_objects.h"

namespace emf::test {
namespace {

struct Mix {
  bool cycles;
  bool unreadable;  // some objects and members of a wrong JSON type
};

class Topology {
 public:
  Topology(unsigned seed, Mix mix) : random_(seed), mix_(mix) {
    const int size = below(25);
    identities_ = 1 + below(size + 1);
    for (int place = 0; place < size; ++place) subnets.push_back(randomSubnet());
    if (!mix.cycles) breakCycles();
    for (int count = below(12); count > 0; --count) nodes.push_back(randomNode());
  }

  Objects subnets;
  Objects nodes;

 private:
  int below(int bound) { return std::uniform_int_distribution<int>(0, bound - 1)(random_); }
  bool oneIn(int chances) { return below(chances) == 0; }
  std::string identity() { return std::to_string(below(identities_)); }

  Json::Value randomSubnet() {
    const std::string own = identity();
    std::string parent = oneIn(6) ? own : identity();
    if (oneIn(8)) parent = "missing" + std::to_string(below(2));
    const std::string label = oneIn(4) ? "" : std::string(1, static_cast<char>('a' + below(26)));
    Json::Value object = subnet(own, label, parent);
    if (oneIn(20)) object.removeMember(oneIn(2) ? "label" : "parentId");
    if (mix_.unreadable && oneIn(10)) {
      const char* const members[] = {"objId", "label", "parentId"};
      if (oneIn(3)) return Json::Value("no object");
      object[members[below(3)]] = Json::Value(Json::arrayValue);
    }
    return object;
  }

  // The first object of an identity counts: where its parents come back to it, it becomes a root.
  void breakCycles() {
    std::map<std::string, Json::Value*> first;
    for (Json::Value& object : subnets) first.emplace(object["objId"].asString(), &object);
    for (auto& [own, object] : first) {
      std::string at = (*object)["parentId"].asString();
      for (std::size_t step = 0; step < first.size() && at != own; ++step) {
        const auto above = first.find(at);
        if (above == first.end() || (*above->second)["parentId"].asString() == at) break;
        at = (*above->second)["parentId"].asString();
      }
      if (at == own) (*object)["parentId"] = own;
    }
  }

  Json::Value randomNode() {
    const char* const ids[] = {"NE=", "NE=", "NE=", "OS=", ""};
    std::string nativeId = ids[below(5)] + std::to_string(below(10));
    if (oneIn(8)) nativeId += ",FR=1";
    Json::Value object = node(nativeId, oneIn(5) ? "0" : "1", identity());
    if (mix_.unreadable && oneIn(15)) object["origin"] = Json::Value(Json::objectValue);
    return object;
  }

  std::mt19937 random_;
  Mix mix_;
  int identities_ = 1;
};

struct Outcome {
  std::map<std::string, std::string> subnetLinks;
  std::map<unsigned long, std::string> deviceLinks;
  std::vector<std::string> events;
  bool raised = false;

  bool operator==(const Outcome& other) const {
    return subnetLinks == other.subnetLinks && deviceLinks == other.deviceLinks &&
           events == other.events && raised == other.raised;
  }
};

std::ostream& operator<<(std::ostream& out, const Outcome& outcome) {
  return out << ::testing::PrintToString(outcome.subnetLinks) << ' '
             << ::testing::PrintToString(outcome.deviceLinks) << ' '
             << ::testing::PrintToString(outcome.events) << (outcome.raised ? " raised" : "");
}

Outcome plain(const Topology& topology) {
  Outcome outcome;
  RecordedTraces traces;
  PlainLinks links(traces);
  try {
    links.refreshSubnets(topology.subnets);
    links.refreshDevices(topology.nodes);
  } catch (const Json::LogicError&) {
    outcome.raised = true;
  }
  outcome.subnetLinks = links.subnetLinks;
  outcome.deviceLinks = links.deviceLinks;
  outcome.events = traces.events;
  return outcome;
}

Outcome product(const Topology& topology) {
  Outcome outcome;
  RecordedTraces traces;
  try {
    SubnetLinks(JsonSubnets(topology.subnets), traces).rebuild(outcome.subnetLinks);
    rebuildDeviceLinks(JsonDevices(topology.nodes), outcome.subnetLinks, outcome.deviceLinks,
                       traces);
  } catch (const Json::LogicError&) {
    outcome.raised = true;
  }
  outcome.events = traces.events;
  return outcome;
}

// What the rounds have to have met, so that an agreement means something.
struct Met {
  int links = 0, missing = 0, repeated = 0, raised = 0;

  void note(const Outcome& outcome) {
    for (const std::string& event : outcome.events) {
      links += event.rfind("link ", 0) == 0 && event.find('/') != std::string::npos;
      missing += event.rfind("missing ", 0) == 0;
      repeated += event.rfind("repeated ", 0) == 0;
    }
    raised += outcome.raised;
  }
};

Met compareRounds(unsigned rounds, Mix mix) {
  Met met;
  for (unsigned seed = 0; seed < rounds; ++seed) {
    const Topology topology(seed, mix);
    const Outcome expected = plain(topology);
    EXPECT_EQ(product(topology), expected) << "seed " << seed;
    met.note(expected);
    if (::testing::Test::HasFailure()) break;
  }
  return met;
}

TEST(RandomTopology, TreesAgreeWithThePlainAlgorithm) {
  const Met met = compareRounds(3000, {false, false});
  EXPECT_GT(met.links, 1000);
  EXPECT_GT(met.missing, 1000);
  EXPECT_EQ(met.repeated, 0);
  EXPECT_EQ(met.raised, 0);
}

TEST(RandomTopology, CyclesAgreeWithThePlainAlgorithm) {
  const Met met = compareRounds(3000, {true, false});
  EXPECT_GT(met.links, 1000);
  EXPECT_GT(met.repeated, 1000);
}

TEST(RandomTopology, UnreadableObjectsEndTheWorkAtTheSamePoint) {
  const Met met = compareRounds(3000, {true, true});
  EXPECT_GT(met.links, 100);
  EXPECT_GT(met.raised, 200);
}

}  // namespace
}  // namespace emf::test
