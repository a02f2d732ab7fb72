#include <future>
#include <stdexcept>
#include <thread>

#include "device_cache_fixture.h"

namespace emf::test {
namespace {

using emf::doubles::platform;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::FieldsAre;
using ::testing::Gt;
using ::testing::IsEmpty;

class DeviceCache : public DeviceCacheTest {
 protected:
  DeviceCache() { reads_ = 0; }
};

TEST_F(DeviceCache, IsOneObjectUntilDestroyed) {
  DeviceInfo* first = DeviceInfo::Instance();
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(DeviceInfo::Instance(), first);
  EXPECT_EQ(DeviceInfo::getInstance(), first);
}

TEST_F(DeviceCache, DestroyEmptiesIt) {
  fill({deviceObject("NE=12", "core-1")});
  DeviceInfo::Destroy();
  DeviceInfo::Destroy();
  network({});
  EXPECT_EQ(cache().getDeviceByID(12, found_), 0);
}

TEST_F(DeviceCache, NothingIsReadAheadOfTheFirstLookup) {
  network({deviceObject("NE=12", "core-1")});
  cache();
  EXPECT_EQ(reads(), 0);
}

TEST_F(DeviceCache, LookupOnAColdCacheFindsTheDeviceAfterOneRefresh) {
  network({deviceObject("NE=12", "core-1", 0x00030004, "10.0.0.12")});
  EXPECT_EQ(cache().getDeviceByID(12, found_), 1);
  EXPECT_EQ(found_, device(12, "core-1", 3, 4, "10.0.0.12"));
  EXPECT_THAT(
      platform().journal.events(),
      ElementsAre(std::string("log: ") + kByIdEntering, std::string("log: ") + kSetEntering,
                  "devices", std::string("log: ") + kSetOuting,
                  std::string("log: ") + kByIdUpdating, std::string("log: ") + kByIdOuting));
}

TEST_F(DeviceCache, EveryLineIsALogTextOfTheEmfLogAtLevelThree) {
  network({deviceObject("NE=12", "core-1")});
  cache().getDeviceByID(12, found_);
  cache().getDeviceByName("nobody", named_);
  EXPECT_THAT(platform().log.lines(),
              Each(FieldsAre("ii_orma_corbaagent_bundle/ii_ormacorba_emf/debug", "LogText",
                             "deviceinfo", "unknown", Gt(0), 3, ::testing::_)));
  EXPECT_THAT(platform().trace.lines(), IsEmpty());
}

TEST_F(DeviceCache, HitReadsNothing) {
  fill({deviceObject("NE=12", "core-1")});
  EXPECT_EQ(cache().getDeviceByID(12, found_), 1);
  EXPECT_EQ(found_, device(12, "core-1"));
  EXPECT_EQ(reads(), 0);
  EXPECT_THAT(platform().log.texts(), ElementsAre(kByIdEntering, kByIdOuting));
}

TEST_F(DeviceCache, UnknownIdRunsExactlyOneRefresh) {
  network({deviceObject("NE=12", "core-1")});
  EXPECT_EQ(cache().getDeviceByID(13, found_), 0);
  EXPECT_EQ(found_, untouched_);
  EXPECT_EQ(reads(), 1);
  EXPECT_THAT(platform().log.texts(),
              ElementsAre(kByIdEntering, kSetEntering, kSetOuting, kByIdUpdating, kByIdOuting));
}

TEST_F(DeviceCache, MissesAreNotRemembered) {
  network({});
  cache().getDeviceByID(13, found_);
  cache().getDeviceByID(13, found_);
  cache().getDeviceByName("x", named_);
  EXPECT_EQ(reads(), 3);
}

TEST_F(DeviceCache, DeviceThatAppearsIsFoundByTheNextMiss) {
  fill({deviceObject("NE=12", "core-1")});
  network({deviceObject("NE=12", "core-1"), deviceObject("NE=13", "core-2")});
  EXPECT_EQ(cache().getDeviceByID(13, found_), 1);
  EXPECT_EQ(found_, device(13, "core-2"));
  EXPECT_EQ(reads(), 1);
}

TEST_F(DeviceCache, ChangeIsNotSeenBeforeARefresh) {
  fill({deviceObject("NE=12", "old")});
  network({deviceObject("NE=12", "new")});
  cache().getDeviceByID(12, found_);
  EXPECT_EQ(found_.name, "old");
  EXPECT_EQ(cache().setDeviceMap(), 1);
  cache().getDeviceByID(12, found_);
  EXPECT_EQ(found_.name, "new");
}

TEST_F(DeviceCache, NegativeAndForeignIdsAreUnknown) {
  network({deviceObject("NE=12", "core-1")});
  for (const long id : {0L, 1L, -12L, 4294967308L}) {
    EXPECT_EQ(cache().getDeviceByID(id, found_), 0) << id;
  }
}

TEST_F(DeviceCache, IdKeepsItsUpperBits) {
  fill({deviceObject("NE=4294967308", "core-1")});
  EXPECT_EQ(cache().getDeviceByID(4294967308L, found_), 1);
  EXPECT_EQ(found_, device(4294967308L, "core-1"));
  EXPECT_EQ(cache().getDeviceByID(12, found_), 0);
}

TEST_F(DeviceCache, RefreshReplacesTheMapWhole) {
  fill({deviceObject("NE=12", "core-1"), deviceObject("NE=13", "core-2")});
  network({deviceObject("NE=14", "core-3")});
  EXPECT_EQ(cache().setDeviceMap(), 1);
  EXPECT_EQ(cache().getDeviceByID(14, found_), 1);
  EXPECT_EQ(cache().getDeviceByID(12, found_), 0);
  EXPECT_EQ(cache().getDeviceByID(13, found_), 0);
}

TEST_F(DeviceCache, RefreshTellsWhereItEntersAndLeaves) {
  network({});
  EXPECT_EQ(cache().setDeviceMap(), 1);
  EXPECT_THAT(platform().log.texts(), ElementsAre(kSetEntering, kSetOuting));
}

TEST_F(DeviceCache, SecondDeviceWithSameIdLoses) {
  network({deviceObject("NE=13", "before"), deviceObject("NE=12", "first", 1, "10.0.0.1"),
           deviceObject("ONE=12", "second", 2, "10.0.0.2"), deviceObject("NE=12", "third")});
  EXPECT_EQ(cache().getDeviceByID(12, found_), 1);
  EXPECT_EQ(found_, device(12, "first", 0, 1, "10.0.0.1"));
  EXPECT_EQ(cache().getDeviceByName("second", named_), 0);
}

TEST_F(DeviceCache, OutageWipesTheCacheOnTheNextMiss) {
  fill({deviceObject("NE=12", "core-1")});
  platform().rest.devicesFail();
  EXPECT_EQ(cache().getDeviceByID(12, found_), 1);
  EXPECT_EQ(cache().getDeviceByID(13, found_), 0);
  found_ = untouched_;
  EXPECT_EQ(cache().getDeviceByID(12, found_), 0);
  EXPECT_EQ(found_, untouched_);
}

TEST_F(DeviceCache, OutageDuringARefreshCountsAsSuccess) {
  platform().rest.devicesFail();
  EXPECT_EQ(cache().setDeviceMap(), 1);
}

TEST_F(DeviceCache, BadIdLeavesEveryOperationAndTheMapAsItWas) {
  fill({deviceObject("NE=12", "core-1")});
  const std::pair<const char*, bool> kBad[] = {{"XYZ", false}, {"NE=9223372036854775808", true}};
  for (const auto& [nativeId, tooLarge] : kBad) {
    network({deviceObject("NE=13", "core-2"), deviceObject(nativeId, "x")});
    const auto expectThrown = [tooLarge = tooLarge](auto operation) {
      if (tooLarge) {
        EXPECT_THROW(operation(), std::out_of_range);
      } else {
        EXPECT_THROW(operation(), std::invalid_argument);
      }
    };
    expectThrown([&] { cache().setDeviceMap(); });
    expectThrown([&] { cache().getDeviceByID(13, found_); });
    expectThrown([&] { cache().getDeviceByName("core-2", named_); });
    EXPECT_EQ(found_, untouched_);
    EXPECT_THAT(named_, IsEmpty());
    Device kept;
    EXPECT_EQ(cache().getDeviceByID(12, kept), 1);
    EXPECT_EQ(kept, device(12, "core-1"));
  }
}

TEST_F(DeviceCache, ExceptionEndsTheLinesWhereItHappened) {
  network({deviceObject("XYZ", "x")});
  EXPECT_THROW(cache().getDeviceByID(13, found_), std::invalid_argument);
  EXPECT_THAT(platform().log.texts(), ElementsAre(kByIdEntering, kSetEntering));
}

TEST_F(DeviceCache, AfterAnExceptionARefreshWorksAgain) {
  network({deviceObject("XYZ", "x")});
  EXPECT_THROW(cache().setDeviceMap(), std::invalid_argument);
  network({deviceObject("NE=12", "core-1")});
  EXPECT_EQ(cache().getDeviceByID(12, found_), 1);
}

TEST_F(DeviceCache, NameLookupOnAColdCacheRefreshesOnce) {
  network({deviceObject("NE=12", "core-1")});
  EXPECT_EQ(cache().getDeviceByName("core-1", named_), 1);
  EXPECT_THAT(named_, ElementsAre(device(12, "core-1")));
  EXPECT_EQ(reads(), 1);
  EXPECT_THAT(platform().log.texts(), ElementsAre(kSetEntering, kSetOuting, kByNameUpdating));
}

TEST_F(DeviceCache, NameLookupThatHitsSaysNothing) {
  fill({deviceObject("NE=12", "core-1")});
  EXPECT_EQ(cache().getDeviceByName("core-1", named_), 1);
  EXPECT_THAT(named_, ElementsAre(device(12, "core-1")));
  EXPECT_THAT(platform().journal.events(), IsEmpty());
}

TEST_F(DeviceCache, UnknownNameRunsExactlyOneRefreshAndEmptiesTheList) {
  fill({deviceObject("NE=12", "core-1")});
  EXPECT_EQ(cache().getDeviceByName("core", named_), 0);
  EXPECT_THAT(named_, IsEmpty());
  EXPECT_EQ(reads(), 1);
  EXPECT_THAT(platform().log.texts(), ElementsAre(kSetEntering, kSetOuting, kByNameUpdating));
}

TEST_F(DeviceCache, DevicesOfOneNameComeInAscendingId) {
  fill({deviceObject("NE=30", "twin"), deviceObject("NE=2", "twin"), deviceObject("NE=7", "other"),
        deviceObject("NE=12", "twin")});
  EXPECT_EQ(cache().getDeviceByName("twin", named_), 1);
  EXPECT_THAT(named_, ElementsAre(device(2, "twin"), device(12, "twin"), device(30, "twin")));
}

TEST_F(DeviceCache, NamesAreComparedByteForByte) {
  fill({deviceObject("NE=2", "Core"), deviceObject("NE=3", "core "), deviceObject("NE=4", "cor"),
        deviceObject("NE=5", "core"), deviceObject("NE=6", "")});
  EXPECT_EQ(cache().getDeviceByName("core", named_), 1);
  EXPECT_THAT(named_, ElementsAre(device(5, "core")));
  EXPECT_EQ(cache().getDeviceByName("", named_), 1);
  EXPECT_THAT(named_, ElementsAre(device(6, "")));
}

TEST_F(DeviceCache, NameEndsAtItsFirstNul) {
  fill({deviceObject("NE=5", "core")});
  EXPECT_EQ(cache().getDeviceByName(std::string("core\0rest", 9), named_), 1);
  EXPECT_THAT(named_, ElementsAre(device(5, "core")));
}

TEST_F(DeviceCache, NamesAreComparedAsConverted) {
  platform().text.characterSetSwitch(1);
  platform().text.conversionGives([](const std::string&) { return std::string("\xD6\xD0"); });
  network({deviceObject("NE=5", "\xE4\xB8\xAD")});
  EXPECT_EQ(cache().getDeviceByName("\xD6\xD0", named_), 1);
  EXPECT_EQ(cache().getDeviceByName("\xE4\xB8\xAD", named_), 0);
}

TEST_F(DeviceCache, LookupsHandOutCopies) {
  fill({deviceObject("NE=12", "core-1")});
  cache().getDeviceByID(12, found_);
  found_.name = "changed";
  cache().getDeviceByName("core-1", named_);
  EXPECT_THAT(named_, ElementsAre(device(12, "core-1")));
}

TEST_F(DeviceCache, ReadersAreServedFromTheOldMapWhileARefreshReads) {
  fill({deviceObject("NE=12", "old")});
  network({deviceObject("NE=12", "new")});
  std::promise<void> reading;
  std::promise<void> mayAnswer;
  platform().rest.duringDeviceRead([&] {
    reading.set_value();
    mayAnswer.get_future().wait();
  });
  std::thread refresher([] { cache().setDeviceMap(); });
  reading.get_future().wait();
  EXPECT_EQ(cache().getDeviceByID(12, found_), 1);
  EXPECT_EQ(found_.name, "old");
  EXPECT_EQ(cache().getDeviceByName("old", named_), 1);
  mayAnswer.set_value();
  refresher.join();
  cache().getDeviceByID(12, found_);
  EXPECT_EQ(found_.name, "new");
}

}  // namespace
}  // namespace emf::test
