// A cell of the REST service: operations against a peer that answers right but for one exchange.
//
// Thread-safety: thread-compatible.
#pragma once

#include <vector>

#include "fault_world.h"
#include "peer.h"
#include "rest_operations.h"

namespace emf::faults {

class RestMatrix : public FaultWorld {
 protected:
  static constexpr int kLongMs = 60000;
  static constexpr int kShortMs = 50;

  explicit RestMatrix(LogService service = LogService::Running) : FaultWorld(service) {
    reach(peer_.port());
  }
  ~RestMatrix() override;

  // The REST service at that port from now on, with these times for an exchange.
  void reach(int port, int connectMs = kLongMs, int totalMs = kLongMs) const;
  // The peer gives these answers, one to each request.
  void answer(std::vector<std::string> answers);
  // The peer gives the operation's right answers.
  void answerRightly(const RestOperation& operation);
  void expectWhole(const RestOperation& operation);
  // What the process holds when every operation has run and the client has let go.
  Holdings settled();

  Peer peer_;

 private:
  const std::size_t threadsAtStart_ = Holdings::now().threads;
};

// A test's own name for an exchange: "EMFTopoI::getAllDevices, exchange 1".
std::string placeOf(const RestOperation& operation, std::size_t exchange);

}  // namespace emf::faults
