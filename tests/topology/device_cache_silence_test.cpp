// The cache's log object is cached once a process: this program never has a log service.
#include "device_cache_fixture.h"

namespace emf::test {
namespace {

TEST_F(DeviceCacheTest, WithoutALogServiceNothingIsWrittenAndLookupsGoOn) {
  emf::doubles::platform().log.absent();
  network({deviceObject("NE=12", "core-1")});
  EXPECT_EQ(cache().getDeviceByID(12, found_), 1);
  EXPECT_EQ(found_, device(12, "core-1"));
  EXPECT_EQ(cache().getDeviceByName("core-1", named_), 1);
  EXPECT_EQ(cache().getDeviceByID(13, found_), 0);
  EXPECT_THAT(emf::doubles::platform().log.lines(), ::testing::IsEmpty());
  EXPECT_THAT(emf::doubles::platform().trace.lines(), ::testing::IsEmpty());
}

}  // namespace
}  // namespace emf::test
