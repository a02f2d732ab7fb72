#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <type_traits>
#include <vector>

#include "emfresrecords.h"
#include "record_fields.h"

namespace {

using emf::test::expectRecord;

// Plain records: no table, copied field by field.
static_assert(!std::is_polymorphic_v<ResTypeID>);
static_assert(!std::is_polymorphic_v<ResourceDn>);
static_assert(!std::is_polymorphic_v<Resource>);
static_assert(!std::is_polymorphic_v<ResourceEightLoc>);
static_assert(!std::is_polymorphic_v<LocationInfo_>);
static_assert(!std::is_polymorphic_v<MaintenanceInfo>);
static_assert(!std::is_polymorphic_v<ResourceAttribute>);
static_assert(!std::is_polymorphic_v<NbiResMainType>);

TEST(ResourceLayout, ResTypeID) {
  expectRecord("ResTypeID", 0, sizeof(ResTypeID),
               {FIELD(ResTypeID, resMainTypeID), FIELD(ResTypeID, resSubTypeID)});
  static_assert(std::is_same_v<decltype(ResTypeID::resMainTypeID), std::int64_t>);
  static_assert(std::is_same_v<decltype(ResTypeID::resSubTypeID), std::int64_t>);
}

TEST(ResourceLayout, ResourceDn) {
  expectRecord("ResourceDn", 0, sizeof(ResourceDn),
               {FIELD(ResourceDn, resDN), FIELD(ResourceDn, resID), FIELD(ResourceDn, label),
                FIELD(ResourceDn, type)});
  static_assert(std::is_same_v<decltype(ResourceDn::resID), std::int64_t>);
  EXPECT_EQ(sizeof(ResourceDn), 88U);
}

TEST(ResourceLayout, Resource) {
  expectRecord("Resource", 0, sizeof(Resource),
               {FIELD(Resource, resIDs), FIELD(Resource, iid), FIELD(Resource, name),
                FIELD(Resource, type)});
  static_assert(std::is_same_v<decltype(Resource::resIDs), std::vector<std::int64_t>>);
  static_assert(std::is_same_v<decltype(Resource::iid), std::int64_t>);
  EXPECT_EQ(sizeof(Resource), 80U);
}

TEST(ResourceLayout, ResourceEightLoc) {
  using Record = ResourceEightLoc;
  expectRecord("ResourceEightLoc", 0, sizeof(Record),
               {FIELD(Record, levels), FIELD(Record, fdn), FIELD(Record, spareNumber),
                FIELD(Record, label), FIELD(Record, resMainTypeID), FIELD(Record, resSubTypeID)});
  static_assert(std::is_same_v<decltype(Record::levels), std::int32_t[8]>);
  static_assert(std::is_same_v<decltype(Record::spareNumber), std::int64_t>);
  EXPECT_EQ(sizeof(Record), 120U);
}

TEST(ResourceLayout, LocationInfo) {
  using Record = LocationInfo_;
  expectRecord("LocationInfo_", 0, sizeof(Record),
               {FIELD(Record, spareNumber), FIELD(Record, country), FIELD(Record, province),
                FIELD(Record, city), FIELD(Record, address)});
  static_assert(std::is_same_v<decltype(Record::spareNumber), std::int64_t>);
}

TEST(ResourceLayout, MaintenanceInfo) {
  using Record = MaintenanceInfo;
  expectRecord("MaintenanceInfo", 0, sizeof(Record),
               {FIELD(Record, iID), FIELD(Record, name), FIELD(Record, dept),
                FIELD(Record, phoneNo), FIELD(Record, email), FIELD(Record, spareText)});
  EXPECT_EQ(sizeof(Record::iID), 8U);
}

TEST(ResourceLayout, ResourceAttribute) {
  using Record = ResourceAttribute;
  expectRecord("ResourceAttribute", 0, sizeof(Record),
               {FIELD(Record, spareNumber), FIELD(Record, id), FIELD(Record, value)});
  static_assert(std::is_same_v<decltype(Record::id), std::int64_t>);
}

TEST(ResourceLayout, NbiResMainType) {
  using Record = NbiResMainType;
  expectRecord("NbiResMainType", 0, sizeof(Record), {FIELD(Record, id), FIELD(Record, name)});
  static_assert(std::is_same_v<decltype(Record::id), std::int32_t>);
}

}  // namespace
