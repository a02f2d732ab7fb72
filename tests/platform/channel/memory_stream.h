// A connection whose peer has said all that it will ever say, and what is sent to it.
#pragma once

#include <algorithm>
#include <cstring>
#include <string>
#include <utility>

#include "byte_stream.h"
#include "orma/channel/channel_error.h"

// What the test and the stream share, so that it outlives the exchange's connection.
struct Conversation {
  std::string incoming;       // what the peer says; then it has closed
  std::size_t chunk = 65536;  // most bytes that one read gives
  unsigned long sendError = 0;
  std::string sent;
  std::size_t taken = 0;  // of incoming
  bool closed = false;    // by the exchange
};

class MemoryStream : public orma::channel::ByteStream {
 public:
  explicit MemoryStream(Conversation& conversation) : talk_(conversation) {}
  ~MemoryStream() override { talk_.closed = true; }

  unsigned long send(const unsigned char* bytes, std::size_t size,
                     const orma::channel::Deadline&) override {
    if (talk_.sendError != 0) return talk_.sendError;
    talk_.sent.append(reinterpret_cast<const char*>(bytes), size);
    return 0;
  }

  unsigned long receive(unsigned char* bytes, std::size_t size, std::size_t& received,
                        const orma::channel::Deadline&) override {
    received = std::min({size, talk_.chunk, talk_.incoming.size() - talk_.taken});
    if (received == 0) return orma::channel::kClosed;
    std::memcpy(bytes, talk_.incoming.data() + talk_.taken, received);
    talk_.taken += received;
    return 0;
  }

 private:
  Conversation& talk_;
};
