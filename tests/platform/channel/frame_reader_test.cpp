// How much memory a frame takes, whatever its header says.
#include "frame_reader.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <limits>
#include <new>

#include "frames.h"
#include "memory_stream.h"

namespace {

std::size_t largestAllocation = 0;

}  // namespace

void* operator new(std::size_t size) {
  largestAllocation = std::max(largestAllocation, size);
  if (void* const memory = std::malloc(size)) return memory;
  throw std::bad_alloc();
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  largestAllocation = std::max(largestAllocation, size);
  return std::malloc(size);
}

void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

namespace orma::channel {
namespace {

constexpr std::size_t kUnlimited = std::numeric_limits<std::uint32_t>::max();

class FrameReaderTest : public testing::Test {
 protected:
  FrameReaderTest() : stream_(talk_), deadline_(std::chrono::seconds(60)), reader_(kUnlimited) {}

  unsigned long read(const std::string& bytes) {
    talk_.incoming += bytes;
    FrameHeader header;
    const unsigned long error = reader_.readHeader(stream_, deadline_, header);
    return error != 0 ? error : reader_.readBody(stream_, deadline_, header.length);
  }

  std::string body(std::size_t size) const {
    return std::string(reinterpret_cast<const char*>(reader_.body()), size);
  }

  Conversation talk_;
  MemoryStream stream_;
  Deadline deadline_;
  FrameReader reader_;
};

// The largest length that a header can tell would be 4 GiB.
TEST_F(FrameReaderTest, AnnouncedLengthIsNotAllocated) {
  const std::string bytes = bytesOf(reply(1, "little"), 0xFFFFFFFF);
  largestAllocation = 0;
  EXPECT_EQ(read(bytes), kClosed);
  EXPECT_EQ(talk_.taken, kFrameHeaderBytes + 6);
  EXPECT_LE(largestAllocation, 65536u);
}

TEST_F(FrameReaderTest, BodiesGrowAndShrinkInOneBuffer) {
  for (const std::size_t size : {1u, 65536u, 65537u, 1000000u, 0u, 3u}) {
    std::string sent(size, '\0');
    for (std::size_t i = 0; i < size; ++i) sent[i] = static_cast<char>(i * 7 + size);
    ASSERT_EQ(read(bytesOf(reply(1, sent))), 0u) << size;
    EXPECT_EQ(body(size), sent) << size;
  }
}

TEST_F(FrameReaderTest, LongBodyComesInSmallPieces) {
  std::string sent;
  for (int i = 0; i < 200000; ++i) sent += static_cast<char>(i % 251);
  talk_.chunk = 977;
  ASSERT_EQ(read(bytesOf(reply(1, sent))), 0u);
  EXPECT_EQ(body(sent.size()), sent);
}

}  // namespace
}  // namespace orma::channel
