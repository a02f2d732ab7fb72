// With a factory of proxies. The caches fill once a process, so the way without one has a program
// of its own.
#include "emfglobal.h"
#include "platform_test.h"

namespace emf::doubles {
namespace {

using ::testing::ElementsAre;
using ::testing::FieldsAre;

class LogProxies : public PlatformTest {
 protected:
  LogProxies() { platform().proxies.present(); }
};

TEST_F(LogProxies, BaseProxyComesFromTheFactoryOnceAndIsNamed) {
  NS_BUNDLEMGR1::LogProxy* proxy = GetBaseLogProxy();
  ASSERT_NE(proxy, nullptr);
  EXPECT_EQ(proxy->GetProxyName(), "RecordingProxy");
  EXPECT_EQ(GetBaseLogProxy(), proxy);
  EXPECT_THAT(platform().proxies.calls(),
              ElementsAre("CreateLogProxy ii_base_bundleii_base_log", "SetBundle ii_base_bundle",
                          "SetModule ii_base_log"));
}

TEST_F(LogProxies, CorbaProxyComesFromTheFactoryOnceAndIsNamed) {
  NS_BUNDLEMGR1::LogProxy* proxy = GetCorbaLogProxy();
  ASSERT_NE(proxy, nullptr);
  EXPECT_EQ(proxy->GetProxyName(), "RecordingProxy");
  EXPECT_EQ(GetCorbaLogProxy(), proxy);
  EXPECT_THAT(platform().proxies.calls(),
              ElementsAre("CreateLogProxy ii_orma_corbaagent_bundleii_ormacorba_emf",
                          "SetBundle ii_orma_corbaagent_bundle", "SetModule ii_ormacorba_emf"));
}

TEST_F(LogProxies, MessageIsSourceThenText) {
  NS_BUNDLEMGR1::LogProxy* proxy = platform().proxies.CreateLogProxy("key");
  const int line = __LINE__ + 1;
  EMF_PRINT(proxy, "ormaemfsvc", 1, "100% up");
  EXPECT_THAT(platform().proxies.calls(),
              ElementsAre("CreateLogProxy key", "SetSource ormaemfsvc", "Print 100% up"));
  EXPECT_THAT(platform().proxies.lines(),
              ElementsAre(FieldsAre("key", "", "", "ormaemfsvc", line, 1, "100% up")));
}

}  // namespace
}  // namespace emf::doubles
