// A platform that gives no slot for an interface name.
#include "fake_service.h"
#include "platform_test.h"
#include "serviceifref.h"

namespace {

bool slotIsMissing = false;
std::vector<std::string> namesAsked;

}  // namespace

extern "C" {
NS_BUNDLEMGR1::InterfaceSlot*
__real__ZN13NS_BUNDLEMGR110CheckIFBufERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEE(
    const std::string& name);
NS_BUNDLEMGR1::InterfaceSlot*
__wrap__ZN13NS_BUNDLEMGR110CheckIFBufERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEE(
    const std::string& name) {
  namesAsked.push_back(name);
  if (slotIsMissing) return nullptr;
  return __real__ZN13NS_BUNDLEMGR110CheckIFBufERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEE(
      name);
}
}

namespace emf::test {
namespace {

using emf::doubles::platform;
using ::testing::ElementsAre;

TEST(MissingSlot, ReferenceSearchesEachTimeAndFilesNothing) {
  platform().reset();
  FakeLogService offered;
  FakeService service(&offered);
  platform().bundles.add("one", "a", &service);
  namesAsked.clear();
  slotIsMissing = true;
  ServiceIFRef<NS_LOG_SERVICE1::LogSvcInterface> reference;
  EXPECT_THAT(namesAsked, ElementsAre("LogSvcInterface"));
  EXPECT_EQ(reference.buffer, nullptr);
  EXPECT_EQ(reference.Get(nullptr), &offered);
  EXPECT_EQ(reference.Get(nullptr), &offered);
  EXPECT_THAT(platform().bundles.questions(),
              ElementsAre("GetBundles", "GetServices one", "GetBundles", "GetServices one"));
  slotIsMissing = false;
  platform().reset();
}

}  // namespace
}  // namespace emf::test
