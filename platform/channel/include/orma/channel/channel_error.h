// The error codes that CAsnCmd::Receive gives on its own, beside those that the server sends.
//
// Thread-safety: immutable.
//
//   if (errorCode == orma::channel::kRefused) advise("is the fault server running?");
#pragma once

namespace orma::channel {

// Codes of the server are passed on unchanged, and it is the server's business to keep clear of
// this range.
enum ErrorCode : unsigned long {
  kNone = 0,
  kNoAddress = 6101,  // the configuration gives no address for the process, or not a usable one
  kRefused = 6102,    // nothing listens there, or it cannot be reached
  kConnectTimeout = 6103,  // no connection within the connect timeout
  kReceiveTimeout = 6104,  // no whole frame within the receive timeout
  kClosed = 6105,          // the connection ended before the exchange did
  kMalformed = 6106,       // what came is no frame of this release
  kTooLarge = 6107,        // a frame is larger than the configured limit
  kWrongOrder = 6108,      // a frame was repeated, left out or sent unasked
  kOtherCommand = 6109,    // a frame answers another command
  kUndecodable = 6110,     // a frame's body is not what was asked for
  kTooManyFrames = 6111,   // there are more frames than the configured limit
  kNotSent = 6112,         // Receive came before Send
  kSystem = 6113           // a failure of the network or the system, other than these
};

}  // namespace orma::channel
