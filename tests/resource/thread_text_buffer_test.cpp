// What the two-gigabyte buffer costs: mappings are counted, and refused, at link time.
#include <sys/mman.h>
#include <unistd.h>

#include <atomic>
#include <thread>
#include <vector>

#include "emfresinterface.h"
#include "platform_test.h"
#include "threadtextbuffer.h"

namespace {

constexpr std::size_t kBufferBytes = 0x7FFFFFFF;

std::atomic<int> buffersMapped{0};
std::atomic<int> buffersUnmapped{0};
std::atomic<void*> lastBuffer{nullptr};
std::atomic<int> lastFlags{0};
std::atomic<bool> refuse{false};

}  // namespace

extern "C" {
void* __real_mmap(void* address, std::size_t size, int protection, int flags, int file, off_t at);
int __real_munmap(void* address, std::size_t size);

void* __wrap_mmap(void* address, std::size_t size, int protection, int flags, int file, off_t at) {
  if (size != kBufferBytes) return __real_mmap(address, size, protection, flags, file, at);
  if (refuse) {
    errno = ENOMEM;
    return MAP_FAILED;
  }
  ++buffersMapped;
  lastFlags = flags;
  lastBuffer = __real_mmap(address, size, protection, flags, file, at);
  return lastBuffer;
}

int __wrap_munmap(void* address, std::size_t size) {
  if (size == kBufferBytes) ++buffersUnmapped;
  return __real_munmap(address, size);
}
}

namespace emf::test {
namespace {

using emf::doubles::platform;
using ::testing::ElementsAre;

class ThreadTextBufferTest : public emf::doubles::PlatformTest {
 protected:
  ThreadTextBufferTest() {
    refuse = false;
    buffersMapped = 0;
    buffersUnmapped = 0;
  }
  ~ThreadTextBufferTest() override { refuse = false; }

  template <class Work>
  static void onNewThread(Work work) {
    std::thread(work).join();
  }
};

std::size_t residentPages(void* buffer) {
  const auto pageBytes = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
  std::vector<unsigned char> residence((kBufferBytes + pageBytes - 1) / pageBytes);
  if (::mincore(buffer, kBufferBytes, residence.data()) != 0) return ~std::size_t{0};
  std::size_t resident = 0;
  for (const unsigned char page : residence) resident += page & 1U;
  return resident;
}

TEST_F(ThreadTextBufferTest, CallsOfAThreadTouchOnePageOfOneBuffer) {
  std::size_t resident = 0;
  onNewThread([&resident] {
    std::string fdn;
    for (std::uint32_t id = 0; id < 1000; ++id) EMFResMgrI::AdpDevID2FDN(id, fdn);
    resident = residentPages(lastBuffer);
  });
  EXPECT_EQ(resident, 1U);
  EXPECT_NE(lastFlags & MAP_NORESERVE, 0);
  EXPECT_EQ(buffersMapped, 1);
  EXPECT_EQ(buffersUnmapped, 1);
}

TEST_F(ThreadTextBufferTest, EachThreadHasItsOwn) {
  std::vector<std::thread> threads;
  std::vector<std::string> fdns(8);
  for (std::uint32_t i = 0; i < fdns.size(); ++i) {
    threads.emplace_back([&fdns, i] {
      for (int round = 0; round < 100; ++round) EMFResMgrI::AdpDevID2FDN(0xE000000 + i, fdns[i]);
    });
  }
  for (std::thread& thread : threads) thread.join();
  for (std::uint32_t i = 0; i < fdns.size(); ++i) {
    EXPECT_EQ(fdns[i], "ONE=" + std::to_string(0xE000000 + i));
  }
  EXPECT_EQ(buffersMapped, 8);
  EXPECT_EQ(buffersUnmapped, 8);
}

TEST_F(ThreadTextBufferTest, IsClearAtEachUse) {
  onNewThread([] {
    auto& buffer = emf::ThreadTextBuffer::forThisThread();
    char* text = buffer.cleared();
    ASSERT_NE(text, nullptr);
    std::fill(text, text + 5000, 'x');
    buffer.wrote(5000);
    text = buffer.cleared();
    EXPECT_EQ(std::count(text, text + 6000, '\0'), 6000);
  });
}

TEST_F(ThreadTextBufferTest, WithoutAddressSpaceFormattingCountsAsFailed) {
  refuse = true;
  int result = 0;
  std::string fdn = "left over";
  onNewThread([&] { result = EMFResMgrI::AdpDevID2FDN(12, fdn); });
  EXPECT_EQ(result, -1);
  EXPECT_EQ(fdn, "");
  EXPECT_THAT(platform().trace.texts(),
              ElementsAre("EMFResMgrI::AdpDevID2FDN snprintf_s failed,iDevID(12)",
                          "EMFResMgrI::AdpDevID2FDN, strFdn = "));
  EXPECT_EQ(buffersUnmapped, 0);
}

TEST_F(ThreadTextBufferTest, AddressSpaceIsAskedForAgainAtTheNextUse) {
  std::string fdn;
  onNewThread([&fdn] {
    refuse = true;
    EXPECT_EQ(EMFResMgrI::AdpDevID2FDN(12, fdn), -1);
    refuse = false;
    EXPECT_EQ(EMFResMgrI::AdpDevID2FDN(12, fdn), 5);
  });
  EXPECT_EQ(fdn, "NE=12");
}

}  // namespace
}  // namespace emf::test
