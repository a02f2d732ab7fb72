#include "device_listing.h"

#include <gmock/gmock.h>

#include "files.h"
#include "inventory_writer.h"
#include "support.h"

namespace ormasim::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class DeviceListingTest : public ::testing::Test {
 protected:
  DeviceListingTest() : made_(directory_.path("net.db")), writer_(made_.database()) {
    writer_.add(physicalRoot());
  }

  void device(std::int64_t id, std::int64_t mainType = 2, std::int64_t subType = 5) {
    DeviceRow row;
    row.id = id;
    row.subnetId = "102";
    row.mainType = mainType;
    row.subType = subType;
    row.ipAddress = "10.0.0." + std::to_string(id);
    row.name = "core-" + std::to_string(id);
    writer_.add(row);
  }
  void frame(std::int64_t deviceId, std::int64_t number) {
    writer_.add(FrameRow{deviceId, number, "Frame"});
  }

  // The native ids of a page; `listing_` is made once all rows are there.
  std::vector<std::string> idsAfter(const DevicePosition& after, std::int64_t limit,
                                    DevicePage& page) {
    DeviceListing listing(made_.database());
    made_.database().execute("COMMIT");  // the listing has a transaction of its own
    json_.clear();
    page = listing.appendPage(after, limit, json_);
    made_.database().execute("BEGIN");
    std::vector<std::string> ids;
    for (const Json::Value& row : json(json_)) ids.push_back(row["nativeId"].asString());
    return ids;
  }

  TempDirectory directory_;
  NewDatabaseFile made_;
  InventoryWriter writer_;
  DevicePage page_;
  std::string json_;
};

TEST_F(DeviceListingTest, EmptyNetworkIsTheManagementSystem) {
  EXPECT_THAT(idsAfter({}, 10, page_), ElementsAre("OS=1"));
  EXPECT_FALSE(page_.more);
}

TEST_F(DeviceListingTest, FramesStandBehindTheirDevice) {
  for (const int id : {10, 2, 3}) device(id);
  frame(3, 1);
  frame(3, 0);
  frame(10, 7);
  EXPECT_THAT(idsAfter({}, 10, page_),
              ElementsAre("OS=1", "NE=2", "NE=3", "NE=3,FR=0", "NE=3,FR=1", "NE=10", "NE=10,FR=7"));
}

TEST_F(DeviceListingTest, RowsCarryTypeAddressAndName) {
  device(2, 2, 5);
  frame(2, 0);
  idsAfter({}, 10, page_);
  EXPECT_EQ(json_,
            "[{\"nativeId\":\"OS=1\",\"typeId\":0,\"ipAddress\":\"\",\"name\":\"OS\"},"
            "{\"nativeId\":\"NE=2\",\"typeId\":131077,\"ipAddress\":\"10.0.0.2\","
            "\"name\":\"core-2\"},"
            "{\"nativeId\":\"NE=2,FR=0\",\"typeId\":196608,\"ipAddress\":\"\","
            "\"name\":\"Frame\"}]");
}

TEST_F(DeviceListingTest, LargeTypesTravelAsSigned32BitNumbers) {
  device(2, 0x7FFF, 0xFFFF);
  device(3, 0x8000, 0);
  device(4, 0xFFFF, 0xFFFF);
  idsAfter({}, 10, page_);
  const Json::Value rows = json(json_);
  EXPECT_EQ(rows[1]["typeId"].asInt(), 0x7FFFFFFF);
  EXPECT_EQ(rows[2]["typeId"].asInt64(), -2147483648LL);
  EXPECT_EQ(rows[3]["typeId"].asInt(), -1);
}

TEST_F(DeviceListingTest, PageEndsAnywhereAndTheNextGoesOnThere) {
  for (const int id : {2, 3, 4}) device(id);
  frame(3, 0);
  frame(3, 1);
  const std::vector<std::string> all = {"OS=1", "NE=2", "NE=3", "NE=3,FR=0", "NE=3,FR=1", "NE=4"};
  EXPECT_EQ(idsAfter({}, 100, page_), all);
  for (std::size_t cut = 1; cut < all.size(); ++cut) {
    DevicePage head;
    std::vector<std::string> ids = idsAfter({}, static_cast<std::int64_t>(cut), head);
    EXPECT_EQ(ids.size(), cut);
    EXPECT_TRUE(head.more);
    for (const std::string& id : idsAfter(head.last, 100, page_)) ids.push_back(id);
    EXPECT_EQ(ids, all);
    EXPECT_FALSE(page_.more);
  }
}

TEST_F(DeviceListingTest, PageThatEndsWithTheLastRowIsTheLast) {
  device(2);
  EXPECT_THAT(idsAfter({}, 2, page_), ElementsAre("OS=1", "NE=2"));
  EXPECT_FALSE(page_.more);
}

TEST_F(DeviceListingTest, PlaceOfARowThatIsGoneIsStillAPlace) {
  device(2);
  device(9);
  EXPECT_THAT(idsAfter({5, 3}, 10, page_), ElementsAre("NE=9"));
  EXPECT_THAT(idsAfter({9, -1}, 10, page_), IsEmpty());
  EXPECT_FALSE(page_.more);
}

TEST(MarkerTest, PositionsRoundTrip) {
  for (const DevicePosition position :
       {DevicePosition{1, -1}, DevicePosition{7, -1}, DevicePosition{7, 0},
        DevicePosition{9223372036854775807, 9223372036854775807}}) {
    const std::optional<DevicePosition> back = positionOf(markerFor(position));
    ASSERT_TRUE(back) << markerFor(position);
    EXPECT_EQ(back->device, position.device);
    EXPECT_EQ(back->frame, position.frame);
  }
}

TEST(MarkerTest, GarbageIsNoPosition) {
  for (const char* marker :
       {"", "d", "x", "7", "d-1", "d7-", "d7-x", "d7-1x", "d7-1-1", "d07", "d7-01", "d+7", " d7",
        "d7 ", "d9223372036854775808", "D7", "d7-+1", "d7--1", "d-0"}) {
    EXPECT_FALSE(positionOf(marker)) << marker;
  }
}

}  // namespace
}  // namespace ormasim::testing
