// An exchange with a peer that says any bytes, in pieces of any size. It ends, in one of the ways
// that there are, and the frames before the end are in order and within the limits.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "frame_exchange.h"
#include "orma/channel/channel_error.h"

namespace {

using orma::channel::ByteStream;
using orma::channel::Deadline;
using orma::channel::FrameExchange;

constexpr std::size_t kMaxFrameBytes = 4096;
constexpr std::uint64_t kMaxFrames = 8;

class FuzzedPeer : public ByteStream {
 public:
  FuzzedPeer(const std::uint8_t* data, std::size_t size, std::size_t chunk)
      : data_(data), left_(size), chunk_(chunk) {}

  unsigned long send(const unsigned char*, std::size_t, const Deadline&) override { return 0; }

  unsigned long receive(unsigned char* bytes, std::size_t size, std::size_t& received,
                        const Deadline&) override {
    received = std::min({size, left_, chunk_});
    if (received == 0) return orma::channel::kClosed;
    std::memcpy(bytes, data_, received);
    data_ += received;
    left_ -= received;
    return 0;
  }

 private:
  const std::uint8_t* data_;
  std::size_t left_;
  const std::size_t chunk_;
};

void expect(bool holds) {
  if (!holds) std::abort();
}

}  // namespace

// The first byte: the lowest bit tells whether there is flow control, the others the pieces' size.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  orma::channel::Request request;
  request.process = 56;
  request.command = 2158;
  request.id = 7;
  request.flowControl = (data[0] & 1) != 0;
  std::size_t reports = 0;
  FrameExchange exchange(
      std::move(request), {std::chrono::seconds(60), kMaxFrameBytes, kMaxFrames},
      [data, size](unsigned long& error) -> std::unique_ptr<ByteStream> {
        error = 0;
        return std::make_unique<FuzzedPeer>(data + 1, size - 1, 1U + data[0] / 2U);
      },
      [&reports](unsigned long) { ++reports; });
  expect(exchange.send());
  std::size_t frames = 0;
  FrameExchange::Step step = exchange.receive();
  for (; step == FrameExchange::Step::Frame; step = exchange.receive()) {
    expect(++frames <= kMaxFrames && exchange.frame().size <= kMaxFrameBytes);
    exchange.askNext();
  }
  const bool failed = step == FrameExchange::Step::Failed;
  expect(failed == (exchange.error() != 0) && reports == (failed ? 1U : 0U));
  expect(exchange.receive() == step);
  return 0;
}
