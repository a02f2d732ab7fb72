// Every allocation of decoding, copying and encoding fails once; the leak checker and the counts
// below see whether anything is lost.
#include <gmock/gmock.h>

#include <cstdlib>
#include <memory>
#include <new>

#include "codec.h"
#include "sample.h"

namespace {

long allocationsLeft = -1;  // until one fails; negative: none does
long allocationsAlive = 0;

}  // namespace

void* operator new(std::size_t size) {
  if (allocationsLeft == 0) {
    allocationsLeft = -1;
    throw std::bad_alloc();
  }
  if (allocationsLeft > 0) --allocationsLeft;
  void* memory = std::malloc(size);
  if (memory == nullptr) throw std::bad_alloc();
  ++allocationsAlive;
  return memory;
}

void operator delete(void* memory) noexcept {
  if (memory == nullptr) return;
  --allocationsAlive;
  std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept { operator delete(memory); }

namespace {

void fill(Sample& sample) {
  sample.name.ReSet("a name of more than twenty-three bytes");
  sample.flag = new AsnInt(-1);
  sample.target = new Point;
  sample.values.add(7);
  sample.notes = new ElementList<AsnOcts>;
  sample.notes->add("a note of more than twenty-three bytes");
  sample.label = new AsnOcts("a label of more than twenty-three bytes");
  sample.children = new ElementList<Sample>;
  sample.children->add().name.ReSet("child");
}

// Runs the call with its first, second, ... allocation failing, until none fails. Gives how many
// times one did.
template <typename Call>
int failEachAllocation(Call call) {
  for (int failed = 0;; ++failed) {
    const long before = allocationsAlive;
    allocationsLeft = failed;
    bool completed = true;
    try {
      call();
    } catch (const std::bad_alloc&) {
      completed = false;
    }
    allocationsLeft = -1;
    EXPECT_EQ(allocationsAlive, before) << "with allocation " << failed << " failing";
    if (completed) return failed;
  }
}

class FailingAllocation : public testing::Test {
 protected:
  FailingAllocation() {
    fill(sample_);
    bytes_ = encoded(sample_);
    Sample first;
    EXPECT_EQ(decode(first, bytes_).code, 0);
  }

  Sample sample_;
  Bytes bytes_;
};

TEST_F(FailingAllocation, OfDecodingLosesNothing) {
  const int failures = failEachAllocation([&] {
    Sample sample;
    AsnBuf buffer(bytes_.data(), bytes_.size());
    unsigned long count = 0;
    sample.BDec(buffer, count, NIClass_EncodingFormat_BER);
  });
  EXPECT_GT(failures, 12);
}

// The failure's own object cannot be made either, at one of the points.
TEST_F(FailingAllocation, OfAFailingDecodingLosesNothing) {
  Bytes cut(bytes_.begin(), bytes_.end() - 1);
  const int failures = failEachAllocation([&] {
    Sample sample;
    AsnBuf buffer(cut.data(), cut.size());
    unsigned long count = 0;
    EXPECT_EQ(failureCode([&] { sample.BDec(buffer, count, NIClass_EncodingFormat_BER); }),
              kAsnEndOfInput);
  });
  EXPECT_GT(failures, 0);
}

TEST_F(FailingAllocation, OfCopyingLosesNothing) {
  EXPECT_GT(failEachAllocation([&] { std::unique_ptr<AsnType>(sample_.clone()); }), 12);
}

TEST_F(FailingAllocation, OfEncodingLosesNothing) {
  EXPECT_GT(failEachAllocation([&] {
              AsnBuf buffer;
              sample_.BEnc(buffer, NIClass_EncodingFormat_BER);
            }),
            0);
}

template <int kNumber>
struct Fresh : described::Sequence<Fresh<kNumber>> {
  static constexpr const char* kName = "Fresh";
  static void addAttributes(refl::CClassInfor& infor) {
    described::addInt(infor, {"first", offsetof(Fresh, first)});
    described::addSequence<Point>(infor, {"second", offsetof(Fresh, second), 5});
  }
  AsnInt first;
  Point second;
};

// A description that failed is made by the next use.
TEST_F(FailingAllocation, OfDescribingIsMadeUpFor) {
  const Fresh<1> object;
  AsnBuf buffer;
  buffer.reserve(100);
  int failures = 0;
  for (bool described = false; !described;) {
    allocationsLeft = failures;
    try {
      object.BEnc(buffer, NIClass_EncodingFormat_BER);
      described = true;
    } catch (const std::bad_alloc&) {
      ++failures;
    }
    allocationsLeft = -1;
  }
  EXPECT_GT(failures, 2);
  EXPECT_EQ(encodedHex(object), "30 0B 02 01 00 A5 06 02 01 00 02 01 00");
}

}  // namespace
