// Every allocation of decoding, copying and encoding fails once; the leak checker and the counts
// below see whether anything is lost.
#include <gmock/gmock.h>

#include <memory>
#include <new>

#include "codec.h"
#include "failing_allocation.h"
#include "sample.h"

namespace {

using emf::test::allocationsInUse;
using emf::test::failAllocation;

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

// Whether the call completes with that allocation failing.
template <typename Call>
bool completesWithout(long allocation, Call call) {
  failAllocation(allocation);
  try {
    call();
  } catch (const std::bad_alloc&) {
    return false;
  }
  failAllocation(0);
  return true;
}

// Runs the call with its first, second, ... allocation failing, until none fails. Gives how many
// times one did.
template <typename Call>
int failEachAllocation(Call call) {
  for (int failures = 0;; ++failures) {
    const long before = allocationsInUse();
    const bool completed = completesWithout(failures + 1, call);
    EXPECT_EQ(allocationsInUse(), before) << "after " << failures << " failures";
    if (completed) return failures;
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
  const auto encode = [&] { object.BEnc(buffer, NIClass_EncodingFormat_BER); };
  while (!completesWithout(failures + 1, encode)) ++failures;
  EXPECT_GT(failures, 2);
  EXPECT_EQ(encodedHex(object), "30 0B 02 01 00 A5 06 02 01 00 02 01 00");
}

}  // namespace
