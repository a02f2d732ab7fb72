// Loading the access product's library.
#include <dlfcn.h>

#include <string>
#include <type_traits>

#include "dll_calls.h"
#include "emfresinterface.h"
#include "orma/access/prdu_res_info_convert.h"
#include "platform_test.h"

namespace emf::test {
namespace {

using emf::doubles::platform;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

static_assert(std::is_same_v<decltype(EMFResMgrI::initAccessFdnConvertDll),
                             std::int64_t(PRDU_ORMA::PrduResInfoConvert*&)>);

// Lazy binding, global symbols.
constexpr char kOpen[] = "open libsnmpresinfo_productconvert_access.so 257 false";
constexpr char kSymbol[] = "symbol createInstanceLib";

class AccessLibrary : public emf::doubles::PlatformTest {
 protected:
  // The record of the recording product, emptied.
  static std::string& events() {
    void* product = ::dlopen(EMF_RECORDING_PRODUCT, RTLD_LAZY);
    static std::string& events =
        *reinterpret_cast<std::string* (*)()>(::dlsym(product, "productEvents"))();
    events.clear();
    return events;
  }

  int placeholder_ = 0;
  PRDU_ORMA::PrduResInfoConvert* const untouched_ =
      reinterpret_cast<PRDU_ORMA::PrduResInfoConvert*>(&placeholder_);
  PRDU_ORMA::PrduResInfoConvert* instance_ = untouched_;
};

TEST_F(AccessLibrary, InstanceIsMadeAndItsThirdOperationCalledOnce) {
  std::string& recorded = events();
  openInstead(EMF_RECORDING_PRODUCT);
  EXPECT_EQ(EMFResMgrI::initAccessFdnConvertDll(instance_), 0);
  EXPECT_NE(instance_, untouched_);
  EXPECT_NE(instance_, nullptr);
  EXPECT_EQ(recorded, " created third");
}

TEST_F(AccessLibrary, LibraryIsClosedOnSuccessToo) {
  openInstead(EMF_RECORDING_PRODUCT);
  EXPECT_EQ(EMFResMgrI::initAccessFdnConvertDll(instance_), 0);
  EXPECT_THAT(dllCalls(), ElementsAre("construct true", kOpen, kSymbol, "close", "destroy"));
}

TEST_F(AccessLibrary, EveryCallMakesAnInstance) {
  std::string& recorded = events();
  openInstead(EMF_RECORDING_PRODUCT);
  EXPECT_EQ(EMFResMgrI::initAccessFdnConvertDll(instance_), 0);
  EXPECT_EQ(EMFResMgrI::initAccessFdnConvertDll(instance_), 0);
  EXPECT_EQ(recorded, " created third created third");
}

TEST_F(AccessLibrary, MissingLibraryIsAFailure) {
  openInstead("/nonexistent/libproduct.so");
  EXPECT_EQ(EMFResMgrI::initAccessFdnConvertDll(instance_), 1);
  EXPECT_EQ(instance_, untouched_);
  EXPECT_THAT(dllCalls(), ElementsAre("construct true", kOpen, "close", "destroy"));
}

TEST_F(AccessLibrary, LibraryWithoutTheFunctionIsAFailure) {
  openInstead(EMF_EMPTY_PRODUCT);
  EXPECT_EQ(EMFResMgrI::initAccessFdnConvertDll(instance_), 1);
  EXPECT_EQ(instance_, untouched_);
  EXPECT_THAT(dllCalls(), ElementsAre("construct true", kOpen, kSymbol, "close", "destroy"));
}

TEST_F(AccessLibrary, NullInstanceIsAFailureAndHandedOut) {
  openInstead(EMF_NULL_PRODUCT);
  EXPECT_EQ(EMFResMgrI::initAccessFdnConvertDll(instance_), 1);
  EXPECT_EQ(instance_, nullptr);
  EXPECT_THAT(dllCalls(), ElementsAre("construct true", kOpen, kSymbol, "close", "destroy"));
}

TEST_F(AccessLibrary, NothingIsTraced) {
  openInstead("/nonexistent/libproduct.so");
  EMFResMgrI::initAccessFdnConvertDll(instance_);
  EXPECT_THAT(platform().trace.texts(), IsEmpty());
  EXPECT_THAT(platform().log.texts(), IsEmpty());
}

}  // namespace
}  // namespace emf::test
