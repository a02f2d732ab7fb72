#include "orma/dao/emf_comm_db_engine.h"

#include <algorithm>
#include <atomic>
#include <mutex>
#include <new>
#include <stdexcept>

#include "inventory_reader.h"
#include "orma/log/trace.h"

namespace {

constexpr int kErrorLevel = 0;
constexpr int kDetailLevel = 3;
constexpr int kFailure = -1;
constexpr int kWithAttributes = 1;

std::mutex engineMutex;
std::atomic<CEmfCommDBEngine*> engine{nullptr};  // written under engineMutex

void trace(int level, const char* operation, const std::string& text) {
  NS_CORBA::GetTss()->file = "emfcommdbengine";
  NS_CORBA::GetTss()->function = "unknown";
  NS_CORBA::GetTss()->line = __LINE__ + 1;
  NS_CORBA::TaDebugWithPara(level, "[CEmfCommDBEngine::%s] %s", operation, text.c_str());
}

// The operation's result, or -1 and a line with the reason.
template <typename Operation>
int reported(const char* name, Operation operation) {
  try {
    return operation();
  } catch (const std::bad_alloc&) {
    throw;
  } catch (const std::exception& failure) {
    trace(kErrorLevel, name, failure.what());
    return kFailure;
  }
}

// Leaves the attributes that were asked for: with no numbers given all of them.
void keepWanted(const std::list<int>& numbers, int flag, _SResProperty& properties) {
  if (flag != kWithAttributes) properties.attributes.clear();
  if (numbers.empty()) return;
  properties.attributes.remove_if([&numbers](const auto& attribute) {
    return std::find(numbers.begin(), numbers.end(), attribute.first) == numbers.end();
  });
}

int unknownDevice(const char* operation, unsigned int id) {
  trace(kDetailLevel, operation, "there is no device " + std::to_string(id));
  return kFailure;
}

}  // namespace

std::string CEmfCommDBEngine::GetModuleName() { return "EmfCommDBEngine"; }

CEmfCommDBEngine* CEmfCommDBEngine::Instance(const std::string&) {
  if (CEmfCommDBEngine* existing = engine.load(std::memory_order_acquire)) return existing;
  const std::lock_guard<std::mutex> lock(engineMutex);
  if (engine.load(std::memory_order_relaxed) == nullptr) {
    engine.store(new CEmfCommDBEngine, std::memory_order_release);
  }
  return engine.load(std::memory_order_relaxed);
}

void CEmfCommDBEngine::Destroy() {
  const std::lock_guard<std::mutex> lock(engineMutex);
  delete engine.exchange(nullptr);
}

CEmfCommDBEngine::CEmfCommDBEngine() : reader_(std::make_shared<dao::InventoryReader>()) {}

CEmfCommDBEngine::~CEmfCommDBEngine() = default;

int CEmfCommDBEngine::GetDevProperty(const std::list<unsigned int>& ids,
                                     std::list<stDevProperty>& out) {
  return reported("GetDevProperty", [&] {
    out.splice(out.end(), reader_->deviceProperties(ids));
    return 0;
  });
}

int CEmfCommDBEngine::GetDevVersionName(unsigned int id, std::string& out) {
  return reported("GetDevVersionName", [&] {
    auto version = reader_->versionName(id);
    if (!version) return unknownDevice("GetDevVersionName", id);
    out = std::move(*version);
    return 0;
  });
}

int CEmfCommDBEngine::GetDevLocationByDevID(unsigned int id, std::list<std::string>& out) {
  return reported("GetDevLocationByDevID", [&] {
    auto parts = reader_->locationParts(id);
    if (!parts) return unknownDevice("GetDevLocationByDevID", id);
    out.splice(out.end(), *parts);
    return 0;
  });
}

int CEmfCommDBEngine::GetResByIID(const std::list<int>& iids, const std::list<int>& attributes,
                                  std::map<int, _SResProperty>& out, int flag) {
  return reported("GetResByIID", [&] {
    auto resources = reader_->resourceProperties({iids.begin(), iids.end()});
    for (const int id : resources.ambiguous) {
      trace(kErrorLevel, "GetResByIID",
            "id " + std::to_string(id) + " is that of several resources, and none is taken");
    }
    for (auto& [id, properties] : resources.found) {
      keepWanted(attributes, flag, properties);
      out[id] = std::move(properties);
    }
    return static_cast<int>(resources.found.size());
  });
}

int CEmfCommDBEngine::GetBaseNode(_ETopoQueryMode mode, const std::string& key,
                                  std::list<NodeStruct>& out) {
  return reported("GetBaseNode", [&] {
    std::list<NodeStruct> nodes;
    switch (mode) {
      case TOPO_QUERY_ALL:
        nodes = reader_->allNodes();
        break;
      case TOPO_QUERY_BY_NODE:
        nodes = reader_->nodesById(key);
        break;
      default:
        throw std::invalid_argument("there is no query mode " + std::to_string(mode));
    }
    const int count = static_cast<int>(nodes.size());
    out.splice(out.end(), nodes);
    return count;
  });
}
