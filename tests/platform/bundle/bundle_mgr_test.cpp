#include "orma/bundle/bundle_mgr.h"

#include <ace/Guard_T.h>
#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <thread>

#include "config_problems.h"
#include "greeting_interface.h"
#include "journal.h"
#include "orma/bundle/interface_slot.h"

namespace NS_BUNDLEMGR1 {
namespace {

using scripted::takeJournal;
using testing::ElementsAre;

struct Entry {
  std::string service;
  std::string factory;
  std::string bundle = "scripted_bundle";
  std::string library = SCRIPTED_SERVICES;
};

std::string document(const std::vector<Entry>& entries, const std::string& onInitFailure) {
  std::string services;
  for (const Entry& entry : entries) {
    services += (services.empty() ? "" : ",");
    services += R"({"bundle":")" + entry.bundle + R"(","service":")" + entry.service +
                R"(","library":")" + entry.library + R"(","factory":")" + entry.factory + "\"}";
  }
  return R"({"onInitFailure":")" + onInitFailure + R"(","bundles":[)" + services + "]}";
}

std::vector<std::string> asLines(const std::vector<ServiceFailure>& failures) {
  std::vector<std::string> lines;
  for (const ServiceFailure& failure : failures) {
    lines.push_back(failure.bundle + "/" + failure.service + ": " + failure.reason);
  }
  return lines;
}

BundleMgr& manager() { return *BundleMgr::Instance(); }

StartReport start(const std::vector<Entry>& entries,
                  const std::string& onInitFailure = "continue") {
  return manager().Start(*parsed(document(entries, onInitFailure)));
}

// What the start of that one service reports.
std::vector<std::string> failuresOf(const Entry& entry) { return asLines(start({entry}).failures); }

std::vector<std::string> listedServices(const std::string& bundle) {
  std::map<std::string, ServiceObjectBase*> services;
  manager().FindBundle(bundle)->GetServices(services);
  std::vector<std::string> names;
  for (const auto& [name, service] : services) names.push_back(name + "=" + service->GetName());
  return names;
}

bool isLoaded(const char* library) {
  void* handle = ::dlopen(library, RTLD_LAZY | RTLD_NOLOAD);
  if (handle != nullptr) ::dlclose(handle);
  return handle != nullptr;
}

class BundleManager : public testing::Test {
 protected:
  BundleManager() { takeJournal(); }
  ~BundleManager() override {
    manager().Stop();
    manager().SetLibraryCheck({});
  }
};

TEST_F(BundleManager, ALibraryThatTheHostSpeaksAgainstIsNotCalled) {
  manager().SetLibraryCheck([](const orma::ConfiguredService& service, const auto&) {
    return service.service == "second" ? "not this one" : "";
  });
  const StartReport report = start({{"first", "make_first"}, {"second", "make_second"}});
  EXPECT_EQ(report.started, 1);
  EXPECT_THAT(asLines(report.failures), ElementsAre("scripted_bundle/second: not this one"));
  EXPECT_THAT(listedServices("scripted_bundle"), ElementsAre("first=first"));
  EXPECT_THAT(takeJournal(), testing::Not(testing::Contains(testing::HasSubstr("second"))));
}

TEST_F(BundleManager, TheHostFindsWhatALibraryExports) {
  bool found = false;
  bool absent = false;
  manager().SetLibraryCheck([&](const orma::ConfiguredService&, const auto& symbol) {
    found = symbol("make_first") != nullptr;
    absent = symbol("make_nothing") == nullptr;
    return "";
  });
  EXPECT_EQ(start({{"first", "make_first"}}).started, 1);
  EXPECT_TRUE(found);
  EXPECT_TRUE(absent);
}

TEST_F(BundleManager, ALibraryThatIsNotThereIsNotAskedAbout) {
  bool asked = false;
  manager().SetLibraryCheck([&](const orma::ConfiguredService&, const auto&) {
    asked = true;
    return "";
  });
  start({{"first", "make_first", "scripted_bundle", "/nowhere/library.so"}});
  EXPECT_FALSE(asked);
}

TEST_F(BundleManager, StartsInOrderAndStopsInReverse) {
  const StartReport report =
      start({{"first", "make_first"}, {"second", "make_second"}, {"third", "make_third", "other"}});
  EXPECT_EQ(report.started, 3);
  EXPECT_TRUE(report.running);
  EXPECT_THAT(asLines(report.failures), ElementsAre());
  EXPECT_THAT(takeJournal(), ElementsAre("first factory", "first init", "second factory",
                                         "second init", "third factory", "third init"));
  EXPECT_THAT(asLines(manager().Stop()), ElementsAre());
  EXPECT_THAT(
      takeJournal(),
      ElementsAre("third ExitSvc", "second ExitSvc", "first ExitSvc", "third UnRegistSvc",
                  "third fini", "third RemoveInterface", "third interface deleted", "deleter",
                  "third destroyed", "second UnRegistSvc", "second fini", "second RemoveInterface",
                  "second interface deleted", "deleter", "second destroyed", "first UnRegistSvc",
                  "first fini", "first RemoveInterface", "first interface deleted", "deleter",
                  "first destroyed"));
}

TEST_F(BundleManager, SecondStopDoesNothing) {
  start({{"first", "make_first"}});
  manager().Stop();
  takeJournal();
  EXPECT_THAT(asLines(manager().Stop()), ElementsAre());
  EXPECT_THAT(takeJournal(), ElementsAre());
}

TEST_F(BundleManager, StartsAgainAfterStop) {
  for (int round = 0; round < 3; ++round) {
    EXPECT_EQ(start({{"first", "make_first"}}).started, 1);
    EXPECT_THAT(takeJournal(), ElementsAre("first factory", "first init"));
    manager().Stop();
    takeJournal();
  }
}

TEST_F(BundleManager, ListsBundlesInConfigurationOrder) {
  start({{"z", "make_first", "z_bundle"},
         {"a", "make_second", "a_bundle"},
         {"b", "make_third", "z_bundle"}});
  std::list<Bundle*> bundles = {nullptr};
  manager().GetBundles(bundles);
  ASSERT_EQ(bundles.size(), 2u);
  EXPECT_EQ(bundles.front()->GetName(), "z_bundle");
  EXPECT_EQ(bundles.back()->GetName(), "a_bundle");
  EXPECT_EQ(manager().FindBundle("a_bundle"), bundles.back());
  EXPECT_EQ(manager().FindBundle("no_bundle"), nullptr);
  EXPECT_THAT(listedServices("z_bundle"), ElementsAre("b=third", "z=first"));
  EXPECT_THAT(listedServices("a_bundle"), ElementsAre("a=second"));
}

TEST_F(BundleManager, ListsNoServiceAfterStop) {
  start({{"first", "make_first"}});
  Bundle* bundle = manager().FindBundle("scripted_bundle");
  manager().Stop();
  EXPECT_EQ(manager().FindBundle("scripted_bundle"), bundle);
  EXPECT_THAT(listedServices("scripted_bundle"), ElementsAre());
}

TEST_F(BundleManager, ServiceThatRunsIsNotStartedTwice) {
  start({{"first", "make_first"}});
  takeJournal();
  EXPECT_THAT(failuresOf({"first", "make_first"}),
              ElementsAre("scripted_bundle/first: is running already"));
  EXPECT_THAT(takeJournal(), ElementsAre());
}

TEST_F(BundleManager, MissingLibraryIsReported) {
  EXPECT_THAT(failuresOf({"lost", "make_first", "scripted_bundle", "/nonexistent/liblost.so"}),
              ElementsAre("scripted_bundle/lost: cannot load the library "
                          "\"/nonexistent/liblost.so\": /nonexistent/liblost.so: cannot open "
                          "shared object file: No such file or directory"));
}

TEST_F(BundleManager, MissingLibraryByNameIsReportedWithEachNameTried) {
  EXPECT_THAT(
      failuresOf({"lost", "make_first", "scripted_bundle", "orma_lost"}),
      ElementsAre("scripted_bundle/lost: cannot load the library \"orma_lost\": "
                  "orma_lost: cannot open shared object file: No such file or directory; "
                  "orma_lost.so: cannot open shared object file: No such file or directory; "
                  "liborma_lost.so: cannot open shared object file: No such file or directory"));
}

TEST_F(BundleManager, UnresolvedSymbolShowsAtLoading) {
  const std::string library = UNRESOLVED_SERVICE;
  EXPECT_THAT(failuresOf({"open", "make_unresolved", "scripted_bundle", library}),
              ElementsAre("scripted_bundle/open: cannot load the library \"" + library +
                          "\": " + library + ": undefined symbol: function_that_nobody_has"));
}

TEST_F(BundleManager, MissingFactoryIsReported) {
  const std::string library = SCRIPTED_SERVICES;
  EXPECT_THAT(failuresOf({"blank", "make_nothing"}),
              ElementsAre("scripted_bundle/blank: the library \"" + library +
                          "\" has no factory \"make_nothing\": " + library +
                          ": undefined symbol: make_nothing"));
}

TEST_F(BundleManager, ThrowingFactoryIsReportedWithItsText) {
  EXPECT_THAT(failuresOf({"angry", "make_throwing"}),
              ElementsAre("scripted_bundle/angry: the factory \"make_throwing\" threw: "
                          "no licence"));
}

TEST_F(BundleManager, FactoryMayThrowAnything) {
  EXPECT_THAT(failuresOf({"angry", "make_throwing_number"}),
              ElementsAre("scripted_bundle/angry: the factory \"make_throwing_number\" threw "
                          "something that is no std::exception"));
}

TEST_F(BundleManager, FactoryWithoutAnObjectIsReported) {
  EXPECT_THAT(failuresOf({"void", "make_null"}),
              ElementsAre("scripted_bundle/void: the factory \"make_null\" gave no object"));
}

TEST_F(BundleManager, ObjectThatIsNoServiceIsReportedAndFreed) {
  EXPECT_THAT(failuresOf({"odd", "make_no_service"}),
              ElementsAre("scripted_bundle/odd: the factory \"make_no_service\" gave an object "
                          "that is no service: its class does not derive from "
                          "NS_BUNDLEMGR1::ServiceObjectBase"));
  EXPECT_THAT(takeJournal(), ElementsAre("deleter", "no service destroyed"));
}

TEST_F(BundleManager, FailedInitUnloadsTheServiceWithoutExitSvc) {
  EXPECT_THAT(failuresOf({"sick", "make_init_fails"}),
              ElementsAre("scripted_bundle/sick: init gave -1"));
  EXPECT_THAT(takeJournal(),
              ElementsAre("sick factory", "sick init", "sick fini", "sick RemoveInterface",
                          "sick interface deleted", "deleter", "sick destroyed"));
  EXPECT_TRUE(CheckIFBuf("scripted.filed")->empty());
  EXPECT_THAT(listedServices("scripted_bundle"), ElementsAre());
}

TEST_F(BundleManager, ThrowingInitIsReportedWithItsText) {
  EXPECT_THAT(failuresOf({"sick", "make_init_throws"}),
              ElementsAre("scripted_bundle/sick: init threw: no disk"));
}

TEST_F(BundleManager, OthersGoOnWhenOneFails) {
  const StartReport report =
      start({{"first", "make_first"}, {"sick", "make_init_fails"}, {"second", "make_second"}});
  EXPECT_EQ(report.started, 2);
  EXPECT_TRUE(report.running);
  EXPECT_THAT(asLines(report.failures), ElementsAre("scripted_bundle/sick: init gave -1"));
  EXPECT_THAT(listedServices("scripted_bundle"), ElementsAre("first=first", "second=second"));
}

TEST_F(BundleManager, EverythingStopsWhenTheConfigurationSaysSo) {
  const StartReport report = start({{"first", "make_first"},
                                    {"stubborn", "make_stop_gives_numbers"},
                                    {"angry", "make_throwing"},
                                    {"second", "make_second"}},
                                   "stop");
  EXPECT_FALSE(report.running);
  EXPECT_EQ(report.started, 2);
  EXPECT_THAT(asLines(report.failures),
              ElementsAre("scripted_bundle/angry: the factory \"make_throwing\" threw: no licence",
                          "scripted_bundle/stubborn: ExitSvc gave -1",
                          "scripted_bundle/stubborn: UnRegistSvc gave 2",
                          "scripted_bundle/stubborn: fini gave 3"));
  EXPECT_THAT(
      takeJournal(),
      ElementsAre("first factory", "first init", "stubborn factory", "stubborn init",
                  "stubborn ExitSvc", "first ExitSvc", "stubborn UnRegistSvc", "stubborn fini",
                  "stubborn RemoveInterface", "stubborn interface deleted", "deleter",
                  "stubborn destroyed", "first UnRegistSvc", "first fini", "first RemoveInterface",
                  "first interface deleted", "deleter", "first destroyed"));
}

TEST_F(BundleManager, TroubleWhileStoppingIsReportedAndTheRestGoesOn) {
  start({{"first", "make_first"}, {"stubborn", "make_stop_throws"}});
  takeJournal();
  EXPECT_THAT(asLines(manager().Stop()),
              ElementsAre("scripted_bundle/stubborn: ExitSvc threw: exit trouble",
                          "scripted_bundle/stubborn: UnRegistSvc threw: unregister trouble",
                          "scripted_bundle/stubborn: fini threw: fini trouble",
                          "scripted_bundle/stubborn: RemoveInterface threw: remove trouble",
                          "scripted_bundle/stubborn: the deleter threw: deleter trouble"));
  EXPECT_THAT(
      takeJournal(),
      ElementsAre("stubborn ExitSvc", "first ExitSvc", "stubborn UnRegistSvc", "stubborn fini",
                  "stubborn RemoveInterface", "stubborn interface deleted", "stubborn destroyed",
                  "first UnRegistSvc", "first fini", "first RemoveInterface",
                  "first interface deleted", "deleter", "first destroyed"));
}

TEST_F(BundleManager, ServiceWithoutADeleterIsDeletedThroughItsDestructor) {
  start({{"undeleted", "make_without_deleter"}});
  manager().Stop();
  const std::vector<std::string> journal = takeJournal();
  EXPECT_EQ(journal.back(), "undeleted destroyed");
  EXPECT_THAT(journal, testing::Not(testing::Contains("deleter")));
}

TEST_F(BundleManager, FilingsOfFactoryAndInitAreTakenBack) {
  start({{"filing", "make_filing"}});
  EXPECT_EQ(CheckIFBuf("scripted.factory")->snapshot().size(), 1u);
  EXPECT_EQ(CheckIFBuf("scripted.init")->snapshot().size(), 1u);
  manager().Stop();
  EXPECT_TRUE(CheckIFBuf("scripted.factory")->empty());
  EXPECT_TRUE(CheckIFBuf("scripted.init")->empty());
}

TEST_F(BundleManager, FilingsOfAFactoryThatThrowsAreTakenBack) {
  EXPECT_THAT(failuresOf({"angry", "make_filing_then_throwing"}),
              ElementsAre("scripted_bundle/angry: the factory \"make_filing_then_throwing\" "
                          "threw: changed my mind"));
  EXPECT_TRUE(CheckIFBuf("scripted.filed")->empty());
}

TEST_F(BundleManager, FilingsOfOthersStay) {
  GreetingInterface* own = nullptr;
  struct Own : GreetingInterface {
    std::string GetIFName() override { return "own"; }
    int IsValid() override { return 1; }
  } filed;
  own = &filed;
  start({{"filing", "make_filing"}});
  SetIFBuf("scripted.init", own);
  manager().Stop();
  EXPECT_THAT(CheckIFBuf("scripted.init")->snapshot(), ElementsAre(own));
  CheckIFBuf("scripted.init")->remove(own);
}

// As a typed reference files the first interface that it finds among the services.
void fileByWalking(InterfaceSlot& slot) {
  ACE_Guard<ACE_Thread_Mutex> guard(_g_actualmutex);
  std::list<Bundle*> bundles;
  manager().GetBundles(bundles);
  for (Bundle* bundle : bundles) {
    std::map<std::string, ServiceObjectBase*> services;
    bundle->GetServices(services);
    for (const auto& [name, service] : services) {
      if (slot.empty()) slot.push_back(service->GetInterface());
    }
  }
}

TEST_F(BundleManager, InterfacesThatOthersFiledAreTakenBack) {
  for (const char* factory : {"make_first", "make_removing_in_fini"}) {
    start({{"found", factory}});
    InterfaceSlot& slot = *CheckIFBuf("scripted.found");
    fileByWalking(slot);
    EXPECT_FALSE(slot.empty()) << factory;
    manager().Stop();
    EXPECT_TRUE(slot.empty()) << factory;
  }
}

TEST_F(BundleManager, InterfacesAreFoundByDynamicCastAcrossLibraries) {
  start({{"first", "make_first"}});
  std::map<std::string, ServiceObjectBase*> services;
  manager().FindBundle("scripted_bundle")->GetServices(services);
  auto* greeting = dynamic_cast<GreetingInterface*>(services.at("first")->GetInterface());
  ASSERT_NE(greeting, nullptr);
  EXPECT_EQ(greeting->greeting(), "hello");
  EXPECT_EQ(greeting->GetIFName(), "first");
}

// What a service leaves behind until the process ends may point into its library.
TEST_F(BundleManager, LibraryStaysMappedAfterTheLastOfItsServices) {
  start({{"first", "make_first"}});
  EXPECT_TRUE(isLoaded(SCRIPTED_SERVICES));
  manager().Stop();
  EXPECT_TRUE(isLoaded(SCRIPTED_SERVICES));
}

TEST_F(BundleManager, ProcessMayEndWithoutStop) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(
      {
        start({{"filing", "make_filing"}});
        std::exit(0);
      },
      testing::ExitedWithCode(0), "^$");
}

TEST_F(BundleManager, ProxyFactoryIsWhatWasSetLast) {
  struct Factory : LogProxyFactory {
    LogProxy* CreateLogProxy(const char*) override { return nullptr; }
  } factory;
  EXPECT_EQ(manager().GetLogProxyFactory(), nullptr);
  manager().SetLogProxyFactory(&factory);
  EXPECT_EQ(manager().GetLogProxyFactory(), &factory);
  manager().SetLogProxyFactory(nullptr);
  EXPECT_EQ(manager().GetLogProxyFactory(), nullptr);
}

TEST_F(BundleManager, ServicesAreFoundWhileTheyComeAndGo) {
  std::atomic<bool> done{false};
  InterfaceSlot& slot = *CheckIFBuf("scripted.walked");
  std::vector<std::thread> walkers;
  for (int i = 0; i < 3; ++i) {
    walkers.emplace_back([&] {
      while (!done) fileByWalking(slot);
    });
  }
  for (int round = 0; round < 30; ++round) {
    EXPECT_EQ(start({{"first", "make_first"}, {"filing", "make_filing"}}).started, 2);
    EXPECT_THAT(asLines(manager().Stop()), ElementsAre());
    EXPECT_TRUE(slot.empty());
  }
  done = true;
  for (std::thread& walker : walkers) walker.join();
}

}  // namespace
}  // namespace NS_BUNDLEMGR1
