#include "orma/ident/resource_ids.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <set>
#include <string>
#include <vector>

namespace {

using NS_UTIL::compat::IID2ResID;
using NS_UTIL::compat::ResID2IID;
using resid_compat::ExtractResIdsFromFDN;
using resid_compat::ResDN2ResID;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr std::int64_t kBit60 = std::int64_t{1} << 60;
constexpr std::int64_t kBit61 = std::int64_t{1} << 61;
constexpr std::int64_t kBit62 = std::int64_t{1} << 62;

// Names that are no FDN of a resource, each for a reason of its own.
const char* const kUnreadableNames[] = {
    "",
    ",",
    "NE",
    "NE=",
    "=2",
    "XYZ",
    "NE=x",
    "NE=2x",
    "NE= 2",
    "NE=+2",
    "NE=-2",
    "NE=0x10",
    "ne=2",
    "NE=1152921504606846976",   // 2^60
    "NE=99999999999999999999",  // beyond 64 bits
    "FR=1",
    "FR=1,NE=2",
    "XE=2,FR=1",
    "NE=2,",
    ",NE=2",
    "NE=2,,FR=1",
    "NE=2,FR",
    "NE=2,FR=",
    "NE=2,=1",
};

TEST(ResourceId, ElementsIdIsItsNumber) {
  EXPECT_EQ(ResDN2ResID("NE=0"), 0);
  EXPECT_EQ(ResDN2ResID("NE=2"), 2);
  EXPECT_EQ(ResDN2ResID("NE=4294967295"), 4294967295);
  EXPECT_EQ(ResDN2ResID("NE=1152921504606846975"), kBit60 - 1);
}

TEST(ResourceId, EachFormOfADeviceNameGivesTheDevicesNumber) {
  EXPECT_EQ(ResDN2ResID("OS=1"), 1);
  EXPECT_EQ(ResDN2ResID("ONE=4063232"), 4063232);
  EXPECT_EQ(ResDN2ResID("EMS=10485760"), 10485760);
  EXPECT_EQ(ExtractResIdsFromFDN("ONE=7,FR=1"), ExtractResIdsFromFDN("NE=7,FR=1"));
}

TEST(ResourceId, LeadingZerosNameTheSameElement) {
  EXPECT_EQ(ResDN2ResID("NE=002"), 2);
  EXPECT_EQ(ResDN2ResID("NE=002,FR=1"), ResDN2ResID("NE=2,FR=1"));
}

// Computed by another implementation of FNV-1a: these ids are stored by clients.
TEST(ResourceId, IdsBelowAnElementStayTheSameInEveryRelease) {
  EXPECT_EQ(ResDN2ResID("NE=2,FR=1"), 5253907868763091724);
  EXPECT_EQ(ResDN2ResID("NE=2,FR=1,S=3"), 5290850205616058834);
  EXPECT_EQ(ResDN2ResID("NE=2,FR=1,S=3,CP=0,PP=0-1-7"), 5055186846427058383);
  EXPECT_EQ(ResDN2ResID("NE=4294967295,FR=0"), 5554606163862631378);
}

TEST(ResourceId, KeyAndValueBelowAnElementCountByteForByte) {
  const std::set<std::int64_t> ids = {ResDN2ResID("NE=2,FR=1"),  ResDN2ResID("NE=2,FR=01"),
                                      ResDN2ResID("NE=2,FR= 1"), ResDN2ResID("NE=2,S=1"),
                                      ResDN2ResID("NE=2,fr=1"),  ResDN2ResID("NE=21,FR=1"),
                                      ResDN2ResID("NE=2,FR=1=")};
  EXPECT_EQ(ids.size(), 7U);
  EXPECT_EQ(ids.count(0), 0U);
}

TEST(ResourceId, PathHoldsOneIdForEachSegmentOutermostFirst) {
  EXPECT_THAT(ExtractResIdsFromFDN("NE=2"), ElementsAre(2));
  EXPECT_THAT(ExtractResIdsFromFDN("NE=2,FR=1,S=3"),
              ElementsAre(2, ResDN2ResID("NE=2,FR=1"), ResDN2ResID("NE=2,FR=1,S=3")));
}

TEST(ResourceId, NameThatCannotBeReadGivesNothing) {
  for (const char* name : kUnreadableNames) {
    EXPECT_EQ(ResDN2ResID(name), 0) << name;
    EXPECT_THAT(ExtractResIdsFromFDN(name), IsEmpty()) << name;
  }
}

TEST(ResourceId, LongNameIsReadToItsEnd) {
  std::string fdn = "NE=2";
  for (int i = 0; i < 20000; ++i) fdn += ",S=" + std::to_string(i);
  const std::vector<std::int64_t> ids = ExtractResIdsFromFDN(fdn);
  ASSERT_EQ(ids.size(), 20001U);
  EXPECT_EQ(std::set<std::int64_t>(ids.begin(), ids.end()).size(), ids.size());
  EXPECT_EQ(ids.back(), ResDN2ResID(fdn));
}

TEST(ResourceId, IdsOfElementsAndBelowAreToldApartByTheirBits) {
  for (const char* name :
       {"NE=2,FR=1", "NE=2,FR=1,S=3", "OS=1,X=1", "NE=1152921504606846975,Y=0"}) {
    const std::int64_t id = ResDN2ResID(name);
    EXPECT_GT(id, 0) << name;
    EXPECT_EQ(id & kBit62, kBit62) << name;
    EXPECT_EQ(id & (kBit61 | kBit60), 0) << name;
  }
}

TEST(CompatibleId, ConversionsAreEachOthersInverse) {
  const std::int64_t lowest = std::numeric_limits<std::int64_t>::min();
  const std::int64_t highest = std::numeric_limits<std::int64_t>::max();
  for (const std::int64_t id :
       {std::int64_t{0}, std::int64_t{1}, std::int64_t{4294967295}, kBit60, kBit62,
        std::int64_t{-1}, lowest, highest, ResDN2ResID("NE=2,FR=1,S=3")}) {
    EXPECT_EQ(IID2ResID(ResID2IID(id)), id);
    EXPECT_EQ(ResID2IID(IID2ResID(id)), id);
    EXPECT_NE(ResID2IID(id), id);
  }
}

TEST(CompatibleId, IsNoResourcesId) {
  for (const char* name : {"NE=2", "OS=1", "NE=2,FR=1"}) {
    const std::int64_t iid = ResID2IID(ResDN2ResID(name));
    EXPECT_EQ(iid & kBit60, kBit60) << name;
  }
}

// Clients cut a device's compatible id to 32 bits to ask the inventory about it.
TEST(CompatibleId, LowerHalfOfAnElementsIsItsDeviceId) {
  EXPECT_EQ(static_cast<std::uint32_t>(ResID2IID(ResDN2ResID("NE=4294967295"))), 4294967295U);
  EXPECT_EQ(static_cast<std::uint32_t>(ResID2IID(ResDN2ResID("NE=2"))), 2U);
}

}  // namespace
