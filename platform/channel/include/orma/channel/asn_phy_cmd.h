// The command to a process of the platform, over a connection of its own.
//
// Thread-safety, failure and an example: asn_cmd.h.
#pragma once

#include "orma/asn1/asn_type.h"
#include "orma/bundle/export.h"
#include "orma/channel/asn_cmd.h"
#include "orma/channel/proc_id.h"

// The part of a command that controls the flow of its reply frames.
class ORMA_API CAsnPhyCmdBlockRef {
 public:
  // Asks for the next frame. A failure is what the next Receive tells. Without effect on a command
  // without flow control, whose frames all come unasked.
  void NeedNextRsp();

 protected:
  explicit CAsnPhyCmdBlockRef(orma::channel::Exchange* exchange) : exchange_(exchange) {}
  ~CAsnPhyCmdBlockRef() = default;

 private:
  [[maybe_unused]] orma::channel::Exchange* exchange_;  // the command's
};

class ORMA_API CAsnPhyCmd : public CAsnCmd, public CAsnPhyCmdBlockRef {
 public:
  // `body` is encoded here and not used later. `timeoutSeconds`, at least 1, is the receive
  // timeout, unless the configuration gives another one. `flowControl`: 1, each frame waits for
  // NeedNextRsp, or 0. `priority` is the server's to interpret. Throws what encoding throws.
  CAsnPhyCmd(unsigned long code, const AsnType& body, const CProcID& destination,
             int timeoutSeconds, unsigned char flowControl, unsigned short priority);
  // In the header, so that whoever makes a command is seen to release it.
  ~CAsnPhyCmd() { Destroy(); }

 private:
  explicit CAsnPhyCmd(orma::channel::Exchange* exchange)
      : CAsnCmd(exchange), CAsnPhyCmdBlockRef(exchange) {}
};
