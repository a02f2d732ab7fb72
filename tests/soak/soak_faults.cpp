#include "soak_faults.h"

#include <cstdint>
#include <iterator>

namespace soak {

namespace {

// A service, how rarely each of its faults comes, and a member whose type can be spoilt. The more
// pages an answer has, the rarer.
struct FaultyService {
  const char* path;
  int oneIn;
  const char* spoiltKey;  // null: none
};

constexpr FaultyService kServices[] = {
    {"/rest/resource/v2/dev-properties", 600, "typeId"},
    {"/rest/topology/v3/tsnodes", 1000, nullptr},
    {"/rest/topology/v3/subnet-view", 1500, "posX"},
    {"/rest/resource/v2/port-properties", 150, nullptr},
    {"/rest/resource/v2/slot-properties", 150, nullptr},
    {"/rest/resource/v2/card-properties", 150, nullptr},
    {"/rest/resource/v2/frame-properties", 150, nullptr},
    {"/rest/resource/v2/ne-properties", 150, nullptr},
    {"/rest/resource/v2/location-maintenance", 150, "country"},
    {"/rest/resource/v2/metadatas/main-resource-type", 150, "id"},
    {"/rest/resource/v3/instances/objects", 200, nullptr},
    {"/rest/resource/v3/instances/objects/FixedNetworkElement", 300, "name"},
    {"/rest/resource/v3/instances/objects/FixedNetworkFrame/actions/query", 150, nullptr},
    {"/rest/resource/v3/instances/objects/FixedNetworkCard/actions/query", 150, nullptr},
    {"/rest/fault/v1/alarm-definitions", 150, "eventType"},
    {"/rest/fault/v1/alarm-reasons", 150, "reasonId"},
    {"/rest/fault/v1/redefined-alarms", 150, "newSeverity"},
};

constexpr const char* kRestFaults[] = {
    R"("action": "refuse")",
    R"("action": "cut")",
    R"("action": "garbage")",
    R"("action": "status", "status": 503)",
    R"("action": "status", "status": 404)",
    R"("action": "status", "status": 401)",
    R"("action": "stall", "seconds": 0.05)",
    R"("action": "stall", "seconds": 0.2)",
};

constexpr int kFaultServerOneIn = 40;
constexpr const char* kFaultServerFaults[] = {
    R"("action": "refuse")",
    R"("action": "cut", "frame": 1)",
    R"("action": "cut", "frame": 3)",
    R"("action": "garbage", "frame": 2)",
    R"("action": "repeat", "frame": 2)",
    R"("action": "wrongOrder", "frame": 2)",
    R"("action": "otherCommand", "frame": 3)",
    R"("action": "error", "code": 5, "frame": 2)",
    R"("action": "reject", "code": 1299, "frame": 3)",
    R"("action": "stall", "seconds": 0.1, "frame": 2)",
};

constexpr char kEndless[] = R"("action": "stall")";
constexpr int kEndlessAreRarer = 4;

class Script {
 public:
  explicit Script(const SoakOptions& options) : options_(options) {}

  // From that request on, so that the first answers are known to be met by none.
  void add(const std::string& path, int from, int oneIn, const std::string& action) {
    text_ += text_.empty() ? "[" : ",\n";
    text_ += "{\"path\": \"" + path + "\", \"requests\": {\"from\": " + std::to_string(from) +
             ", \"oneIn\": " + std::to_string(oneIn) +
             ", \"seed\": " + std::to_string(options_.seed) + "}, " + action + "}";
  }

  void addService(const FaultyService& service) {
    const int from = faultlessRequests();
    for (const char* action : kRestFaults) add(service.path, from, service.oneIn, action);
    if (service.spoiltKey != nullptr) {
      add(service.path, from, service.oneIn,
          std::string(R"("action": "wrongType", "key": ")") + service.spoiltKey + "\"");
    }
    if (options_.endlessStalls) {
      add(service.path, from, service.oneIn * kEndlessAreRarer, kEndless);
    }
  }

  void addFaultServer() {
    constexpr int kFaultlessCommands = 3;
    for (const char* action : kFaultServerFaults) {
      add("fault-server", kFaultlessCommands, kFaultServerOneIn, action);
    }
    if (options_.endlessStalls) {
      add("fault-server", kFaultlessCommands, kFaultServerOneIn * kEndlessAreRarer, kEndless);
    }
  }

  std::string text() const { return text_ + "]\n"; }

 private:
  // What every operation asks for when it is called once, and more.
  int faultlessRequests() const { return 40 + options_.elements / 50; }

  const SoakOptions& options_;
  std::string text_;
};

}  // namespace

std::string faultScript(const SoakOptions& options) {
  Script script(options);
  for (const FaultyService& service : kServices) script.addService(service);
  script.add("/rest/resource/v3/instances/objects", 100, 100, R"("action": "expireCursors")");
  script.addFaultServer();
  return script.text();
}

}  // namespace soak
