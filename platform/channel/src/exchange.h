// What a command holds: its exchange of frames with the process that the configuration names, and
// how the messages in them are encoded.
//
// Thread-safety: thread-compatible. Failure: asn_cmd.h tells it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "frame_exchange.h"
#include "orma/asn1/asn_buf.h"
#include "orma/asn1/asn_type.h"
#include "orma/channel/proc_id.h"
#include "orma/metrics/outside_services.h"
#include "settings.h"

namespace orma::channel {

// What the caller of a command says.
struct Command {
  std::uint32_t code = 0;
  CProcID destination;
  int timeoutSeconds = 0;
  bool flowControl = false;
  std::uint16_t priority = 0;
};

class Exchange {
 public:
  Exchange(const Command& command, const AsnType& body, const Settings& settings);
  Exchange(const Exchange&) = delete;
  Exchange& operator=(const Exchange&) = delete;
  ~Exchange();

  bool send();
  bool receive(unsigned long& errorCode, AsnType& reply);
  void askNext() { frames_.askNext(); }

 private:
  FrameExchange::Step receiveFrame(AsnType& reply);
  bool decode(AsnType& reply);
  void countFailure();

  const AsnTagging tagging_;
  FrameExchange frames_;
  bool answered_ = false;                     // a frame could be used
  std::optional<metrics::Exchange> counted_;  // from the sending to the end
};

}  // namespace orma::channel
