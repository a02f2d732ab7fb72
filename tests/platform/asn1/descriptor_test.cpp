#include <gmock/gmock.h>

#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "codec.h"
#include "sample.h"

namespace {

using refl::CClassInfor;

template <int kNumber>
struct Fresh : described::Sequence<Fresh<kNumber>> {
  static constexpr const char* kName = "Fresh";
  static void addAttributes(CClassInfor& infor) {
    described::addInt(infor, {"first", offsetof(Fresh, first)});
    described::addSequence<Point>(infor, {"second", offsetof(Fresh, second), 5});
  }
  AsnInt first;
  Point second;
};

// The first use of a class by many threads at once; the thread sanitizer looks on.
template <int kNumber>
void useFromManyThreads() {
  std::vector<std::string> texts(8);
  std::vector<std::thread> threads;
  threads.reserve(texts.size());
  for (auto& text : texts) {
    threads.emplace_back([&text] {
      Fresh<kNumber> object;
      object.first = 7;
      text = encodedHex(object);
    });
  }
  for (auto& thread : threads) thread.join();
  EXPECT_THAT(texts, testing::Each("30 0B 02 01 07 A5 06 02 01 00 02 01 00"));
}

TEST(Descriptor, IsFilledOnceByWhicheverThreadComesFirst) {
  useFromManyThreads<1>();
  useFromManyThreads<2>();
  useFromManyThreads<3>();
  useFromManyThreads<4>();
}

// A sequence whose fields a test describes by itself.
template <int kNumber>
struct Odd : described::Sequence<Odd<kNumber>> {
  static constexpr const char* kName = "Odd";
  static void addAttributes(CClassInfor& infor) { describeField(infor); }
  static inline void (*describeField)(CClassInfor&) = nullptr;
  AsnInt field;
};

std::string refusal(const AsnType& object) {
  try {
    encoded(object);
  } catch (const std::logic_error& refused) {
    return refused.what();
  }
  return "";
}

TEST(Descriptor, OfAnUnknownTypeIsRefused) {
  Odd<1>::describeField = [](CClassInfor& infor) {
    infor.AddAttribInfor(refl::Enum::Public, 0, "field", -1);
  };
  EXPECT_EQ(refusal(Odd<1>()), "the field field of Odd is of no type of ASN.1");
}

TEST(Descriptor, OfACustomTypeThatIsNoListIsRefused) {
  Odd<2>::describeField = [](CClassInfor& infor) {
    infor.AddAttribInfor(refl::Enum::Public, 0, "field", -1)
        .ChangeTypeTo_CustomType("Map", 8, nullptr, nullptr, 42);
  };
  EXPECT_EQ(refusal(Odd<2>()), "the field field of Odd is of no type of ASN.1");
}

TEST(Descriptor, WithUnknownFlagsIsRefused) {
  Odd<3>::describeField = [](CClassInfor& infor) {
    described::addInt(infor, {"field", 8, -1, static_cast<refl::Enum::HoldingFlagEnum>(0x11)});
  };
  EXPECT_EQ(refusal(Odd<3>()), "the field field of Odd has unknown flags");
}

TEST(Descriptor, WithATagNumberBelowMinusOneIsRefused) {
  Odd<4>::describeField = [](CClassInfor& infor) { described::addInt(infor, {"field", 8, -2}); };
  EXPECT_EQ(refusal(Odd<4>()), "the field field of Odd has a tag number below -1");
}

// The two upper bits of the flags are not the holding's.
TEST(Descriptor, ReadsTheLowSixBitsOfTheFlagsAlone) {
  Odd<5>::describeField = [](CClassInfor& infor) {
    described::addInt(infor, {"field", offsetof(Odd<5>, field)});
    // The record is the caller's until the class is described.
    auto& second = infor.AddAttribInfor(refl::Enum::Public, offsetof(Odd<5>, field), "again", -1);
    second = infor.attributes().front().type;
    second.flags = 0xC0;
    second.setHolding(refl::Enum::ByValue);
    if (second.flags != 0xC0) throw std::logic_error("the upper bits are lost");
  };
  EXPECT_EQ(encodedHex(Odd<5>()), "30 06 02 01 00 02 01 00");
}

}  // namespace
