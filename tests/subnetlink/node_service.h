// The topology node service behind the scripted REST client: nodes and subnets as they stand now,
// each list on one page, with outages.
//
//   NodeService service;
//   service.subnets({subnet("1", "Region", "1")});
//   service.onRequest([] { … });   // before each answer
//
// Thread-safety: thread-safe. Answers from its construction until the platform's next reset.
#pragma once

#include <functional>
#include <mutex>
#include <string>

#include "platform.h"
#include "topology_objects.h"

namespace emf::test {

class NodeService {
 public:
  NodeService() {
    emf::doubles::platform().rest.answersBy(
        [this](const Nimbola::RestReq& request, Json::Value& response) {
          return answer(request, response);
        });
  }
  NodeService(const NodeService&) = delete;
  NodeService& operator=(const NodeService&) = delete;
  ~NodeService() { emf::doubles::platform().rest.answersBy(nullptr); }

  void subnets(Objects objects) {
    std::lock_guard lock(mutex_);
    subnets_ = std::move(objects);
  }
  void nodes(Objects objects) {
    std::lock_guard lock(mutex_);
    nodes_ = std::move(objects);
  }
  void outage(bool subnets, bool nodes) {
    std::lock_guard lock(mutex_);
    subnetsDown_ = subnets;
    nodesDown_ = nodes;
  }
  void onRequest(std::function<void()> hook) {
    std::lock_guard lock(mutex_);
    hook_ = std::move(hook);
  }

 private:
  bool answer(const Nimbola::RestReq& request, Json::Value& response) {
    std::function<void()> hook;
    {
      std::lock_guard lock(mutex_);
      hook = hook_;
    }
    if (hook) hook();
    const Json::Value& classes = request.params["conditions"][0]["simple"]["value"];
    const bool forSubnets = classes.size() == 1 && classes[0] == "subnet";
    std::lock_guard lock(mutex_);
    if (forSubnets ? subnetsDown_ : nodesDown_) return false;
    response = nodePage(forSubnets ? subnets_ : nodes_);
    return true;
  }

  std::mutex mutex_;
  Objects subnets_;
  Objects nodes_;
  bool subnetsDown_ = false;
  bool nodesDown_ = false;
  std::function<void()> hook_;
};

}  // namespace emf::test
