// A command on the ASN.1 command channel: it is sent once and answered by any number of reply
// frames, which are received one by one.
//
// Thread-safety: thread-compatible; commands of different threads are independent of each other.
// Failure: by the error codes of channel_error.h, and by what the decoder throws.
//
//   CAsnPhyCmd command(2158, request, faultServer, 300, 1, 0);
//   command.Send(nullptr);
//   unsigned long error = 0;
//   while (command.Receive(error, reply) && error == 0) { use(reply); command.NeedNextRsp(); }
#pragma once

#include "orma/asn1/asn_type.h"
#include "orma/bundle/export.h"

namespace orma::channel {
class Exchange;
}

// Somebody to be told of a command's progress. This channel's commands are waited for by their
// callers, so that the class only stands in the signature; null is what is passed.
class ORMA_API CAsnTask {
 public:
  virtual ~CAsnTask();
};

class ORMA_API CAsnCmd {
 public:
  CAsnCmd(const CAsnCmd&) = delete;
  CAsnCmd& operator=(const CAsnCmd&) = delete;

  // Connects and sends the request; blocks up to the connect timeout and then up to the receive
  // timeout. False when that failed or the command was sent before; why is what the next Receive
  // tells.
  bool Send(CAsnTask* task);

  // Waits for the next reply frame, at most the receive timeout for the whole of it.
  // True: a frame was decoded into `reply`; `errorCode` is the frame's own, 0 when all is well.
  // False with `errorCode` 0: the exchange is over. False with another code: it has failed, for
  // good; later calls give the same code.
  // What decoding throws (a CSM_Exception*, owned by who catches it, or std::bad_alloc) passes; the
  // exchange has then failed with orma::channel::kUndecodable, and `reply` may hold a part.
  bool Receive(unsigned long& errorCode, AsnType& reply);

  // Drops the connection and frees what the command holds. The destructor of the command itself
  // calls it, once; after it nothing else may be called.
  void Destroy();

 protected:
  explicit CAsnCmd(orma::channel::Exchange* exchange) : exchange_(exchange) {}
  ~CAsnCmd() = default;

 private:
  [[maybe_unused]] orma::channel::Exchange* exchange_;  // owned until Destroy
};
