#include "orma/log/log_service.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <cstdio>
#include <stdexcept>
#include <thread>

#include "log_fixture.h"
#include "orma/asn1/asn_int.h"
#include "orma/bundle/bundle_mgr.h"
#include "orma/bundle/interface_slot.h"

namespace NS_LOG_SERVICE1 {
namespace {

using NS_BUNDLEMGR1::Bundle;
using NS_BUNDLEMGR1::BundleMgr;
using NS_BUNDLEMGR1::LogProxy;
using testing::ElementsAre;

BundleMgr& manager() { return *BundleMgr::Instance(); }

void startLogService() {
  const auto configuration = parsed(
      R"({"bundles": [{"bundle": "ii_log_bundle", "service": "ii_log_service", "library": ")" LOG_LIBRARY
      R"(", "factory": "_make_orma_log_service"}]})");
  const auto report = manager().Start(*configuration);
  for (const auto& failure : report.failures) ADD_FAILURE() << failure.reason;
}

// The log service among all services, or null.
LogSvcInterface* findLogService() {
  std::list<Bundle*> bundles;
  manager().GetBundles(bundles);
  for (Bundle* bundle : bundles) {
    std::map<std::string, NS_BUNDLEMGR1::ServiceObjectBase*> services;
    bundle->GetServices(services);
    for (const auto& [name, service] : services) {
      if (auto* found = dynamic_cast<LogSvcInterface*>(service->GetInterface())) return found;
    }
  }
  return nullptr;
}

class LogService : public LogTest {
 protected:
  LogService() {
    logToFile();
    startLogService();
  }
  ~LogService() override { manager().Stop(); }

  static LogObject& debugLog() {
    return *findLogService()->GetLog("ii_domain_bundle", "ii_domain_model", "debug");
  }
  static LogProxy& baseProxy() {
    return *manager().GetLogProxyFactory()->CreateLogProxy("ii_base_bundleii_base_log");
  }
};

TEST_F(LogService, IsFoundAmongTheServicesOnlyWhileItRuns) {
  ASSERT_NE(findLogService(), nullptr);
  EXPECT_EQ(findLogService()->GetIFName(), "LogSvcInterface");
  EXPECT_EQ(findLogService()->IsValid(), 1);
  EXPECT_THAT(manager().Stop().size(), 0);
  EXPECT_EQ(findLogService(), nullptr);
}

TEST_F(LogService, LeavesItsSlotWhenItStops) {
  auto* slot = NS_BUNDLEMGR1::CheckIFBuf("LogSvcInterface");
  slot->push_back(findLogService());
  EXPECT_FALSE(slot->empty());
  manager().Stop();
  EXPECT_TRUE(slot->empty());
}

TEST_F(LogService, GivesOneObjectForEachTriple) {
  LogSvcInterface& service = *findLogService();
  LogObject* object = service.GetLog("b", "m", "n");
  ASSERT_NE(object, nullptr);
  EXPECT_EQ(service.GetLog("b", "m", "n"), object);
  EXPECT_NE(service.GetLog("b", "m", "o"), object);
  EXPECT_NE(service.GetLog("bm", "", "n"), object);
  EXPECT_NE(service.GetLog("", "bm", "n"), service.GetLog("bm", "", "n"));
}

TEST_F(LogService, TextCarriesTheNameOfTheObject) {
  debugLog().LogText("emfresinterface", "unknown", 12, 0, "REST %s%n failed");
  EXPECT_EQ(onlyLine(),
            "error emfresinterface:12 unknown ii_domain_bundle/ii_domain_model/debug REST %s%n "
            "failed");
}

TEST_F(LogService, FormatIsCarriedOut) {
  debugLog().LogFormat("f", "unknown", 3, 1, "%d%%", 50);
  EXPECT_EQ(onlyLine(), "info f:3 unknown ii_domain_bundle/ii_domain_model/debug 50%");
}

TEST_F(LogService, MessageAboveTheThresholdIsNotEvenFormatted) {
  debugLog().LogFormat("f", "unknown", 3, 3, "%s", reinterpret_cast<const char*>(0x10));
  debugLog().LogText("f", "unknown", 3, 3, "detail");
  EXPECT_THAT(lines(), ElementsAre());
}

struct CountedObject : AsnInt {
  void Print(std::ostream& out, unsigned int, bool) const override {
    ++printed;
    out << "request {\n  id 1\n}";
  }
  mutable int printed = 0;
};

struct UnprintableObject : AsnInt {
  void Print(std::ostream&, unsigned int, bool) const override {
    throw std::runtime_error("no schema");
  }
};

TEST_F(LogService, ObjectIsPrintedAtDetailLevel) {
  CountedObject object;
  debugLog().LogAsn("f", "unknown", 3, object);
  EXPECT_EQ(object.printed, 0);
  logToFile(R"(,"level": 3)");
  debugLog().LogAsn("f", "unknown", 3, object);
  EXPECT_EQ(onlyLine(),
            "detail f:3 unknown ii_domain_bundle/ii_domain_model/debug request {\\n  id 1\\n}");
}

TEST_F(LogService, ObjectThatCannotBePrintedDoesNoHarm) {
  logToFile(R"(,"level": 3)");
  debugLog().LogAsn("f", "unknown", 3, UnprintableObject());
  EXPECT_EQ(onlyLine(),
            "detail f:3 unknown ii_domain_bundle/ii_domain_model/debug an object that cannot be "
            "printed: no schema");
}

TEST_F(LogService, ProxyWritesItsSourceAndNames) {
  LogProxy& proxy = baseProxy();
  proxy.SetBundle("ii_base_bundle");
  proxy.SetModule("ii_base_log");
  proxy.SetSource("ormaemfsvc", 44);
  proxy.Print(1, "start %s%n!");
  EXPECT_EQ(onlyLine(), "info ormaemfsvc:44 - ii_base_bundle/ii_base_log start %s%n!");
}

TEST_F(LogService, ProxyWithoutNamesGoesByItsKey) {
  LogProxy& proxy = *manager().GetLogProxyFactory()->CreateLogProxy("nameless");
  proxy.Print(1, nullptr);
  EXPECT_EQ(onlyLine(), "info -:0 - nameless (null)");
}

TEST_F(LogService, ProxyFormatHasNoLevelAndIsAlwaysWritten) {
  logToFile(R"(,"level": 0)");
  LogProxy& proxy = *manager().GetLogProxyFactory()->CreateLogProxy("formatting");
  proxy.SetSource("f", 1);
  proxy.PrintFormat("%s=%d", "x", 1);
  proxy.Print(1, "above");
  EXPECT_EQ(onlyLine(), "trace f:1 - formatting x=1");
}

TEST_F(LogService, SourceOfOneProxyIsNotThatOfAnother) {
  LogProxy& one = *manager().GetLogProxyFactory()->CreateLogProxy("one");
  LogProxy& other = *manager().GetLogProxyFactory()->CreateLogProxy("other");
  one.SetSource("one.cpp", 1);
  other.Print(1, "text");
  EXPECT_EQ(onlyLine(), "info -:0 - other text");
}

TEST_F(LogService, LongSourceOfAProxyIsCut) {
  LogProxy& proxy = *manager().GetLogProxyFactory()->CreateLogProxy("long");
  proxy.SetSource(std::string(100, 'f').c_str(), 1);
  proxy.Print(1, "text");
  EXPECT_EQ(onlyLine(), "info " + std::string(63, 'f') + ":1 - long text");
}

TEST_F(LogService, ProxyKnowsItsKind) {
  EXPECT_EQ(baseProxy().GetProxyName(), "SinkLogProxy");
  EXPECT_EQ(baseProxy().Reserved3(), 0);
}

TEST_F(LogService, FactoryGivesOneProxyForEachKey) {
  EXPECT_EQ(&baseProxy(), &baseProxy());
  EXPECT_NE(manager().GetLogProxyFactory()->CreateLogProxy("other"), &baseProxy());
  EXPECT_NE(manager().GetLogProxyFactory()->CreateLogProxy(nullptr), nullptr);
}

TEST_F(LogService, TakesItsProxyFactoryBackWhenItStops) {
  manager().Stop();
  EXPECT_EQ(manager().GetLogProxyFactory(), nullptr);
}

TEST_F(LogService, WhatItHandedOutGoesOnAfterItStopped) {
  LogSvcInterface& service = *findLogService();
  LogObject& object = debugLog();
  LogProxy& proxy = *manager().GetLogProxyFactory()->CreateLogProxy("kept");
  manager().Stop();
  object.LogText("f", "unknown", 1, 1, "object");
  proxy.Print(1, "proxy");
  EXPECT_EQ(service.GetLog("ii_domain_bundle", "ii_domain_model", "debug"), &object);
  EXPECT_EQ(lines().size(), 2u);
}

TEST_F(LogService, GivesTheSameObjectsWhenItStartsAgain) {
  LogObject* object = &debugLog();
  LogProxy* proxy = &baseProxy();
  manager().Stop();
  startLogService();
  EXPECT_EQ(&debugLog(), object);
  EXPECT_EQ(&baseProxy(), proxy);
}

TEST_F(LogService, ServesThreadsWhileItStopsAndStarts) {
  LogSvcInterface& service = *findLogService();
  std::atomic<bool> done{false};
  std::vector<std::thread> threads;
  for (int i = 0; i < 3; ++i) {
    threads.emplace_back([&, i] {
      while (!done) {
        service.GetLog("b", "m", std::to_string(i))->LogText("f", "unknown", 1, 1, "text");
        auto* factory = manager().GetLogProxyFactory();
        if (factory == nullptr) continue;
        LogProxy& proxy = *factory->CreateLogProxy("shared");
        proxy.SetBundle("b");
        proxy.SetModule("m");
        proxy.SetSource("f", 1);
        proxy.Print(1, "text");
      }
    });
  }
  for (int round = 0; round < 20; ++round) {
    manager().Stop();
    startLogService();
  }
  done = true;
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(findLogService(), &service);
}

}  // namespace
}  // namespace NS_LOG_SERVICE1
