#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "message_walk.h"

namespace emf::test {
namespace {

constexpr AsnTagging kTaggings[] = {AsnTagging::Implicit, AsnTagging::Explicit};

template <typename Message>
class MessageCodec : public ::testing::Test {};

using Messages =
    ::testing::Types<AsnOtherToSvrQryAlmEventReq, AsnSvrToOtherQryResp,
                     AsnSvrToOtherQryRespResultStrc, AsnDistinguishedResource, AsnRelation,
                     AsnAlmQryExtendCondition, AsnAddiInfo, AsnoFMSDateTimeStrc, AsnAlmKeyStrc>;
TYPED_TEST_SUITE(MessageCodec, Messages, );

TYPED_TEST(MessageCodec, RandomValuesComeBack) {
  Randomness random(11);
  TypeParam decoded;  // reused, so that what one value leaves must not show in the next
  for (const AsnTagging tagging : kTaggings) {
    for (int i = 0; i < 200; ++i) {
      TypeParam message;
      fill(message, random);
      const std::string bytes = encoded(message, tagging);
      EXPECT_EQ(decode(decoded, bytes, tagging), bytes.size());
      ASSERT_EQ(xml(decoded), xml(message));
    }
  }
}

TYPED_TEST(MessageCodec, OptionalFieldsComeBackInEveryCombination) {
  TypeParam probe;
  const int optionals = setPresent(probe, 0);
  Randomness random(12);
  for (const AsnTagging tagging : kTaggings) {
    for (unsigned present = 0; present < 1U << optionals; ++present) {
      TypeParam message;
      setPresent(message, present);
      const std::string bytes = encoded(message, tagging);
      TypeParam decoded;
      setPresent(decoded, static_cast<unsigned>(random.number()));
      EXPECT_EQ(decode(decoded, bytes, tagging), bytes.size());
      ASSERT_EQ(xml(decoded), xml(message)) << present;
      EXPECT_EQ(encoded(decoded, tagging), bytes);
    }
  }
}

TYPED_TEST(MessageCodec, TruncationAtEveryByteIsTold) {
  Randomness random(13);
  for (const AsnTagging tagging : kTaggings) {
    for (int i = 0; i < 5; ++i) {
      TypeParam message;
      fill(message, random);
      const std::string bytes = encoded(message, tagging);
      const std::size_t step = 1 + bytes.size() / 300;
      for (std::size_t size = 0; size < bytes.size(); size += step) {
        TypeParam decoded;
        EXPECT_NE(failureOf([&] { decode(decoded, bytes.substr(0, size), tagging); }), nullptr)
            << size << " of " << toHex(bytes);
      }
    }
  }
}

// One byte changed: a value, perhaps another one, or the documented failure; nothing else.
TYPED_TEST(MessageCodec, ChangedBytesAreReadOrTold) {
  Randomness random(14);
  for (int i = 0; i < 300; ++i) {
    TypeParam message;
    fill(message, random);
    std::string bytes = encoded(message);
    for (unsigned change = random.upTo(2);; --change) {
      bytes[random.upTo(static_cast<unsigned>(bytes.size()) - 1)] =
          static_cast<char>(random.upTo(255));
      if (change == 0) break;
    }
    TypeParam decoded;
    if (failureOf([&] { decode(decoded, bytes); }) == nullptr) {
      EXPECT_FALSE(encoded(decoded).empty());
    }
  }
}

// Worked out by hand, in docs/alarms.md.
TEST(GoldenBytes, AlarmKey) {
  AsnAlmKeyStrc key;
  key.cDevType = 3;
  key.sAlmID = 300;
  EXPECT_EQ(toHex(encoded(key)), toHex(fromHex("30 07 02 01 03 02 02 01 2C")));
}

TEST(GoldenBytes, DateTime) {
  AsnoFMSDateTimeStrc time;
  time.sYear = 2024;
  time.cMonth = 1;
  time.cDay = 2;
  time.cHour = 23;
  time.cMinute = 59;
  time.cSecond = -1;
  EXPECT_EQ(toHex(encoded(time)),
            toHex(fromHex("30 13 02 02 07 E8 02 01 01 02 01 02 02 01 17 02 01 3B 02 01 FF")));
}

TEST(GoldenBytes, ResourceInBothTaggingModes) {
  AsnDistinguishedResource resource;
  resource.resDN.ReSet("NE=2");
  resource.subtype.make() = 5;
  resource.aResRelation.make().add().iRelation = 1;
  EXPECT_EQ(toHex(encoded(resource)), toHex(fromHex("30 15 04 04 4E 45 3D 32 82 01 05 "
                                                    "A5 0A 30 08 02 01 01 02 01 00 30 00")));
  EXPECT_EQ(toHex(encoded(resource, AsnTagging::Explicit)),
            toHex(fromHex("30 19 04 04 4E 45 3D 32 A2 03 02 01 05 "
                          "A5 0C 30 0A 30 08 02 01 01 02 01 00 30 00")));
}

TEST(GoldenBytes, EmptyRequest) {
  const std::string noTime = "30 12 02 01 00 02 01 00 02 01 00 02 01 00 02 01 00 02 01 00 ";
  EXPECT_EQ(toHex(encoded(AsnOtherToSvrQryAlmEventReq())),
            toHex(fromHex("30 2F 02 01 00 " + noTime + noTime + "30 00 04 00")));
}

TEST(GoldenBytes, LastFrameWithoutItems) {
  AsnSvrToOtherQryResp reply;
  reply.ulFrameTotal = 2;
  reply.ulFrameNo = 2;
  EXPECT_EQ(toHex(encoded(reply)), toHex(fromHex("30 0B 02 01 00 02 01 02 02 01 02 30 00")));
}

// strFdn has [5] and the later addiInfoList [4]: each is found by its place and tag.
TEST(Item, TagsOutOfOrderAreTakenAsTheyStand) {
  AsnSvrToOtherQryRespResultStrc item;
  item.strFdn.make().ReSet("NE=2");
  item.addiInfoList.make().add().type = 3;
  AsnSvrToOtherQryRespResultStrc decoded;
  decode(decoded, encoded(item));
  EXPECT_TRUE(same(decoded, item));
  EXPECT_TRUE(decoded.strFdn && decoded.addiInfoList);
  item.strFdn.make();
  AsnSvrToOtherQryRespResultStrc without;
  decode(decoded, encoded(without));
  EXPECT_FALSE(decoded.strFdn);
  EXPECT_FALSE(decoded.addiInfoList);
}

// A list's elements stand behind its own tag, whatever tag the list has in a message.
TEST(Item, OptionalListOfIndefiniteLengthWantsItsOwnTag) {
  AsnDistinguishedResource resource;
  decode(resource, fromHex("30 12 04 00 A5 80 30 08 30 08 02 01 01 02 01 00 30 00 00 00"));
  ASSERT_TRUE(resource.aResRelation);
  EXPECT_EQ(resource.aResRelation->count(), 1U);
  const auto failure = failureOf([&] {
    decode(resource, fromHex("30 12 04 00 A5 80 A5 08 30 08 02 01 01 02 01 00 30 00 00 00"));
  });
  ASSERT_NE(failure, nullptr);
  EXPECT_EQ(failure->message(), "Unexpected Tag");
}

TEST(Item, MissingRequiredFieldIsTold) {
  AsnAlmKeyStrc key;
  EXPECT_NE(failureOf([&] { decode(key, fromHex("30 03 02 01 03")); }), nullptr);
  AsnSvrToOtherQryResp reply;
  const auto failure =
      failureOf([&] { decode(reply, fromHex("30 0B 02 01 00 02 01 02 02 01 02 31 00")); });
  ASSERT_NE(failure, nullptr);
  EXPECT_EQ(failure->code(), -54);
  EXPECT_EQ(failure->line(), 250);
}

TEST(Item, UnsignedNumbersKeepTheirBits) {
  AsnAlmKeyStrc key;
  decode(key, fromHex("30 0E 02 05 00 FF FF FF FF 02 05 00 80 00 00 00"));
  EXPECT_EQ(int{key.cDevType}, -1);
  EXPECT_EQ(int{key.sAlmID}, -2147483647 - 1);
}

}  // namespace
}  // namespace emf::test
