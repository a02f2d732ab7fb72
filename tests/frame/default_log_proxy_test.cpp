// Without a factory of proxies, or with one that gives none.
#include "emfglobal.h"
#include "platform_test.h"
#include "stdout_capture.h"

namespace emf::doubles {
namespace {

class DefaultLogProxies : public PlatformTest {};

TEST_F(DefaultLogProxies, WithoutAFactoryMessagesGoToStandardOutputForGood) {
  NS_BUNDLEMGR1::LogProxy* proxy = GetBaseLogProxy();
  ASSERT_NE(proxy, nullptr);
  EXPECT_EQ(proxy->GetProxyName(), "DefaultLogProxy");
  std::string written;
  {
    StdoutCapture output;
    EMF_PRINT(proxy, "ormaemfsvc", 1, "100%d\n");
    written = output.text();
  }
  EXPECT_EQ(written, "100%d\n");
  platform().proxies.present();
  EXPECT_EQ(GetBaseLogProxy(), proxy);
  EXPECT_THAT(platform().proxies.calls(), ::testing::IsEmpty());
}

TEST_F(DefaultLogProxies, FactoryThatGivesNullLeadsToTheFallback) {
  platform().proxies.givesNull();
  NS_BUNDLEMGR1::LogProxy* proxy = GetCorbaLogProxy();
  ASSERT_NE(proxy, nullptr);
  EXPECT_EQ(proxy->GetProxyName(), "DefaultLogProxy");
  EXPECT_EQ(GetCorbaLogProxy(), proxy);
}

// Every operation but Print; the results of those that return a number, joined.
int callTheOthers(NS_BUNDLEMGR1::LogProxy& proxy) {
  proxy.Reserved1();
  proxy.Reserved2();
  proxy.PrintFormat("%d", 7);
  proxy.Reserved8();
  proxy.SetSource("file", 1);
  proxy.SetBundle("bundle");
  proxy.SetModule("module");
  return proxy.Reserved3() | proxy.Reserved4() | proxy.Reserved5() | proxy.Reserved6() |
         proxy.Reserved7() | proxy.Reserved9();
}

TEST_F(DefaultLogProxies, FallbackDoesNothingElse) {
  NS_BUNDLEMGR1::DefaultLogProxy proxy;
  int results = -1;
  std::string written;
  {
    StdoutCapture output;
    results = callTheOthers(proxy);
    written = output.text();
  }
  EXPECT_EQ(results, 0);
  EXPECT_EQ(written, "");
}

}  // namespace
}  // namespace emf::doubles
