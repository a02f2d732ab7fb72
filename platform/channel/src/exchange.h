// What a command holds: its exchange of frames with the process that the configuration names, and
// how the messages in them are encoded.
//
// Thread-safety: thread-compatible. Failure: asn_cmd.h tells it.
#pragma once

#include <cstdint>
#include <string>

#include "frame_exchange.h"
#include "orma/asn1/asn_buf.h"
#include "orma/asn1/asn_type.h"
#include "orma/channel/proc_id.h"
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

  bool send() { return frames_.send(); }
  bool receive(unsigned long& errorCode, AsnType& reply);
  void askNext() { frames_.askNext(); }

 private:
  bool decode(AsnType& reply);

  const AsnTagging tagging_;
  FrameExchange frames_;
};

}  // namespace orma::channel
