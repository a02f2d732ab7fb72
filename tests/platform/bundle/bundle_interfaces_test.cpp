#include <gtest/gtest.h>

#include <cstdio>

#include "orma/bundle/interface_slot.h"
#include "orma/bundle/log_proxy.h"
#include "orma/bundle/service_object_base.h"

namespace NS_BUNDLEMGR1 {
namespace {

TEST(NullServiceInterface, TellsThatItIsNone) {
  NULLServiceInterface none;
  EXPECT_EQ(none.GetIFName(), "NULLServiceInterface!");
  EXPECT_EQ(none.IsValid(), 0);
  EXPECT_NE(dynamic_cast<FinalClass*>(&none), nullptr);
}

TEST(NullServiceInterface, ProcessWideOneIsNullUntilSomeoneMakesIt) {
  EXPECT_EQ(__atomic_load_n(&_g_nullServiceInterface, __ATOMIC_ACQUIRE), nullptr);
}

struct CountedInterface : ServiceInterface {
  ~CountedInterface() override { ++deleted; }
  std::string GetIFName() override { return "counted"; }
  int IsValid() override { return 1; }
  inline static int deleted = 0;
};

class PlainService : public ServiceObjectBase {
 public:
  PlainService() : ServiceObjectBase("plain_bundle", "plain_service") {}
  int ExitSvc() override { return 0; }
  ServiceInterface* CreateInterface() override { return m_interface = new CountedInterface; }
};

TEST(ServiceObjectBase, KnowsItsNames) {
  PlainService service;
  EXPECT_EQ(service.GetName(), "plain_service");
  EXPECT_EQ(service.bundleName(), "plain_bundle");
}

TEST(ServiceObjectBase, DoesNothingUnlessToldOtherwise) {
  PlainService service;
  EXPECT_EQ(service.init(0, nullptr), 0);
  EXPECT_EQ(service.UnRegistSvc(), 0);
  EXPECT_EQ(service.fini(), 0);
  EXPECT_EQ(service.GetInterface(), nullptr);
}

TEST(ServiceObjectBase, RemoveInterfaceDeletesItOnce) {
  PlainService service;
  ServiceInterface* made = service.CreateInterface();
  EXPECT_EQ(service.GetInterface(), made);
  CountedInterface::deleted = 0;
  service.RemoveInterface();
  EXPECT_EQ(service.GetInterface(), nullptr);
  service.RemoveInterface();
  EXPECT_EQ(CountedInterface::deleted, 1);
}

TEST(DefaultLogProxy, PrintWritesTheBareTextToStandardOutput) {
  DefaultLogProxy proxy;
  testing::internal::CaptureStdout();
  proxy.SetSource("ormaemfsvc", 12);
  proxy.SetBundle("ii_base_bundle");
  proxy.SetModule("ii_base_log");
  proxy.Print(1, "100 %s %n done");
  proxy.Print(9, nullptr);
  proxy.PrintFormat("nothing %d", 1);
  std::fflush(stdout);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "100 %s %n done");
}

TEST(DefaultLogProxy, EverythingElseDoesNothing) {
  DefaultLogProxy proxy;
  proxy.Reserved1();
  proxy.Reserved2();
  proxy.Reserved8();
  EXPECT_EQ(proxy.Reserved3() + proxy.Reserved4() + proxy.Reserved5() + proxy.Reserved6() +
                proxy.Reserved7() + proxy.Reserved9(),
            0);
  EXPECT_EQ(proxy.GetProxyName(), "DefaultLogProxy");
}

}  // namespace
}  // namespace NS_BUNDLEMGR1
