#include <condition_variable>
#include <ctime>
#include <mutex>

#include "deviceinfo.h"
#include "service_fixture.h"
#include "stdout_capture.h"
#include "transmitassistant.h"

namespace {

// Where the task sleeps: until the gate is opened, instead of 1800 seconds.
class Gate {
 public:
  void wait() {
    std::unique_lock lock(mutex_);
    opened_.wait(lock, [this] { return open_; });
  }
  void set(bool open) {
    std::lock_guard lock(mutex_);
    open_ = open;
    opened_.notify_all();
  }

 private:
  std::mutex mutex_;
  std::condition_variable opened_;
  bool open_ = false;
};

Gate& sleepGate() {
  static Gate gate;
  return gate;
}

}  // namespace

extern "C" int __wrap_nanosleep(const timespec*, timespec*) {
  sleepGate().wait();
  return 0;
}

namespace emf::test {
namespace {

using emf::doubles::platform;
using emf::doubles::StdoutCapture;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::FieldsAre;
using ::testing::IsEmpty;

constexpr char kExitLine[] =
    "\n========== Exit Bundle Service ---[ ii_orma_corbaagent_bundle -- ii_ormaiac_emf ] "
    "==========\n";

class ServiceObject : public ServiceTest {
 protected:
  ServiceObject() { sleepGate().set(false); }

  // Opens the sleep, so that a task that runs can leave, and exits.
  static int exitService(NS_BUNDLEMGR1::ServiceObjectBase& service) {
    sleepGate().set(true);
    return exitAndCapture(service).first;
  }
  // The result of ExitSvc and what it wrote to standard output.
  static std::pair<int, std::string> exitAndCapture(NS_BUNDLEMGR1::ServiceObjectBase& service) {
    StdoutCapture output;
    const int result = service.ExitSvc();
    return {result, output.text()};
  }
};

TEST_F(ServiceObject, FactoryGivesTheNamedService) {
  const Service service = load();
  ASSERT_NE(service, nullptr);
  EXPECT_NE(dynamic_cast<NS_ORMACORBA::ii_ormaiac_emf*>(service.get()), nullptr);
  EXPECT_EQ(service->bundleName(), "ii_orma_corbaagent_bundle");
  EXPECT_EQ(service->GetName(), "ii_ormaiac_emf");
  EXPECT_EQ(service->UnRegistSvc(), 0);
}

TEST_F(ServiceObject, ClassAddsNoDataToItsBase) {
  EXPECT_EQ(sizeof(NS_ORMACORBA::ii_ormaiac_emf), sizeof(NS_BUNDLEMGR1::ServiceObjectBase));
}

TEST_F(ServiceObject, FactoryNeedsNoPlaceForTheDeleter) {
  ACE_Service_Object* made = _make_ii_ormaiac_emf(nullptr);
  ASSERT_NE(made, nullptr);
  auto* service = dynamic_cast<NS_BUNDLEMGR1::ServiceObjectBase*>(made);
  EXPECT_EQ(slot().front(), service->GetInterface());
  clearSlot();
  service->RemoveInterface();
  delete made;
}

TEST_F(ServiceObject, FactoryFilesTheInterfaceBeforeInit) {
  write("a.res", "5=five\n");
  const Service service = load();
  EXPECT_THAT(slot().snapshot(), ElementsAre(service->GetInterface()));
  EXPECT_EQ(slot().front()->GetIFName(), "ErrorCodeBufIfImpl");
  EXPECT_EQ(askForText(5), "unknown");
  ASSERT_EQ(service->init(0, nullptr), 0);
  EXPECT_EQ(askForText(5), "five");
}

TEST_F(ServiceObject, FactoryStartsNothingElse) {
  const Service service = load();
  EXPECT_THAT(platform().journal.events(), IsEmpty());
}

using ServiceObjectDeathTest = ServiceObject;

TEST_F(ServiceObjectDeathTest, DeleterRefusesNull) {
#ifdef ACE_NDEBUG
  GTEST_SKIP() << "ACE's assertions are off in this build";
#endif
  ACE_Service_Object_Exterminator exterminate = nullptr;
  std::unique_ptr<ACE_Service_Object> made(_make_ii_ormaiac_emf(&exterminate));
  EXPECT_DEATH(exterminate(nullptr), "_p != 0");
  clearSlot();
  dynamic_cast<NS_BUNDLEMGR1::ServiceObjectBase&>(*made).RemoveInterface();
}

TEST_F(ServiceObject, CreateInterfaceLeavesTheFirstFiledAndUnfreed) {
  const Service service = load();
  NS_BUNDLEMGR1::ServiceInterface* first = service->GetInterface();
  NS_BUNDLEMGR1::ServiceInterface* second = service->CreateInterface();
  EXPECT_EQ(service->GetInterface(), second);
  NS_BUNDLEMGR1::ServiceInterface* third = service->CreateInterface();
  EXPECT_EQ(service->GetInterface(), third);
  EXPECT_NE(first, second);
  EXPECT_NE(second, third);
  EXPECT_THAT(slot().snapshot(), ElementsAre(first));
  EXPECT_EQ(askForText(5), "unknown");
  delete first;
  delete second;
}

// Counts its own end.
class MortalInterface : public ErrorCodeBufIfImpl {
 public:
  explicit MortalInterface(int& ends) : ends_(ends) {}
  ~MortalInterface() override { ++ends_; }

 private:
  int& ends_;
};

class ServiceWithInterface : public NS_ORMACORBA::ii_ormaiac_emf {
 public:
  explicit ServiceWithInterface(NS_BUNDLEMGR1::ServiceInterface* offered) { m_interface = offered; }
};

TEST_F(ServiceObject, RemoveInterfaceDeletesItOnceAndClearsThePointer) {
  int ends = 0;
  ServiceWithInterface service(new MortalInterface(ends));
  service.RemoveInterface();
  EXPECT_EQ(ends, 1);
  EXPECT_EQ(service.GetInterface(), nullptr);
  service.RemoveInterface();
  EXPECT_EQ(ends, 1);
}

TEST_F(ServiceObject, DestructionReleasesNothingElse) {
  int ends = 0;
  MortalInterface offered(ends);
  SubmapBufMgr* const task = SubmapBufMgr::Instance();
  { const ServiceWithInterface service(&offered); }
  EXPECT_EQ(ends, 0);
  EXPECT_EQ(SubmapBufMgr::Instance(), task);
  EXPECT_THAT(platform().journal.events(), IsEmpty());
}

TEST_F(ServiceObject, WithoutTheKeyInitLoadsTheTableAndStartsNoTask) {
  write("a.res", "5=five\n");
  const Service service = load();
  EXPECT_EQ(service->init(0, nullptr), 0);
  EXPECT_EQ(askForText(5), "five");
  EXPECT_THAT(platform().config.itemQuestions(), ElementsAre("IsReportSubnet"));
  EXPECT_THAT(platform().proxies.calls(), IsEmpty());
  EXPECT_THAT(platform().trace.lines(), IsEmpty());
  EXPECT_EQ(SubmapBufMgr::Instance()->thr_count(), 0U);
}

TEST_F(ServiceObject, KeyAtZeroStartsNoTask) {
  platform().config.item("IsReportSubnet", 0);
  const Service service = load();
  EXPECT_EQ(service->init(0, nullptr), 0);
  EXPECT_THAT(platform().proxies.calls(), IsEmpty());
  EXPECT_THAT(platform().trace.lines(), IsEmpty());
  EXPECT_EQ(SubmapBufMgr::Instance()->thr_count(), 0U);
}

TEST_F(ServiceObject, AnyOtherKeyStartsTheTask) {
  for (const int value : {1, -1, 2, 2147483647, -2147483647 - 1}) {
    platform().reset();
    platform().proxies.present();
    sleepGate().set(false);
    platform().config.environment(environment());
    platform().config.item("IsReportSubnet", value);
    const Service service = load();
    EXPECT_EQ(service->init(0, nullptr), 0);
    EXPECT_THAT(platform().trace.texts(),
                Contains("[SubmapBufMgr::InitBuf] SubmapBufMgr::svc is activated"))
        << value;
    EXPECT_EQ(SubmapBufMgr::Instance()->thr_count(), 1U) << value;
    EXPECT_EQ(exitService(*service), 0);
    EXPECT_EQ(SubmapBufMgr::Instance()->thr_count(), 0U) << value;
    EXPECT_EQ(service->fini(), 0);
    clearSlot();
  }
}

TEST_F(ServiceObject, TaskIsAnnouncedByTheBaseProxyAtLevelOne) {
  platform().config.item("IsReportSubnet", -1);
  const Service service = load();
  ASSERT_EQ(service->init(0, nullptr), 0);
  EXPECT_THAT(platform().proxies.lines(),
              ElementsAre(FieldsAre("ii_base_bundleii_base_log", ::testing::_, ::testing::_,
                                    "ormaemfsvc", ::testing::Gt(0), 1,
                                    "in [ii_ormaiac_emf::init] SubmapBufMgr InitBuf start!")));
  EXPECT_EQ(exitService(*service), 0);
}

TEST_F(ServiceObject, AnnouncementComesAfterTheKeyAndBeforeTheStart) {
  platform().config.item("IsReportSubnet", 1);
  const Service service = load();
  ASSERT_EQ(service->init(0, nullptr), 0);
  std::vector<std::string> order;
  for (const std::string& event : platform().journal.events()) {
    if (event.rfind("config: ", 0) == 0 || event.rfind("proxy: SetSource", 0) == 0 ||
        event.rfind("proxy: Print", 0) == 0 || event.find("is activated") != std::string::npos) {
      order.push_back(event);
    }
  }
  EXPECT_THAT(order,
              ElementsAre("config: IsReportSubnet", "proxy: SetSource ormaemfsvc",
                          "proxy: Print in [ii_ormaiac_emf::init] SubmapBufMgr InitBuf start!",
                          "trace: [SubmapBufMgr::InitBuf] SubmapBufMgr::svc is activated"));
  EXPECT_EQ(exitService(*service), 0);
}

TEST_F(ServiceObject, KeyIsReadOnceForEachInit) {
  const Service service = load();
  ASSERT_EQ(service->init(0, nullptr), 0);
  platform().config.item("IsReportSubnet", 1);
  EXPECT_EQ(SubmapBufMgr::Instance()->thr_count(), 0U);
  ASSERT_EQ(service->init(0, nullptr), 0);
  EXPECT_EQ(SubmapBufMgr::Instance()->thr_count(), 1U);
  EXPECT_THAT(platform().config.itemQuestions(), ElementsAre("IsReportSubnet", "IsReportSubnet"));
  EXPECT_EQ(exitService(*service), 0);
}

TEST_F(ServiceObject, MissingErrorFilesDoNotStopInit) {
  platform().config.environment("/no/such/place");
  const Service service = load();
  EXPECT_EQ(service->init(0, nullptr), 0);
  EXPECT_EQ(askForText(5), "unknown");
  EXPECT_THAT(platform().log.lines(), IsEmpty());
}

TEST_F(ServiceObject, ExitWithoutATaskPrintsItsLineAndReturnsAtOnce) {
  const Service service = load();
  ASSERT_EQ(service->init(0, nullptr), 0);
  const auto [result, output] = exitAndCapture(*service);
  EXPECT_EQ(result, 0);
  EXPECT_EQ(output, kExitLine);
  EXPECT_THAT(platform().proxies.calls(), IsEmpty());
}

TEST_F(ServiceObject, ExitBeforeInitMakesAnIdleTaskOnlyToStopIt) {
  const Service service = load();
  const auto [result, output] = exitAndCapture(*service);
  EXPECT_EQ(result, 0);
  EXPECT_EQ(output, kExitLine);
}

TEST_F(ServiceObject, FiniWithoutExitAndTaskReleasesTheEngine) {
  const Service service = load();
  EXPECT_EQ(service->fini(), 0);
  EXPECT_THAT(platform().database.calls(), ElementsAre("Instance database-double", "Destroy"));
  EXPECT_FALSE(platform().database.engineExists());
  EXPECT_EQ(service->fini(), 0);
}

TEST_F(ServiceObject, FiniLeavesTheFilingAndTheTable) {
  write("a.res", "5=five\n");
  const Service service = load();
  ASSERT_EQ(service->init(0, nullptr), 0);
  EXPECT_EQ(service->fini(), 0);
  EXPECT_THAT(slot().snapshot(), ElementsAre(service->GetInterface()));
  EXPECT_EQ(askForText(5), "five");
}

TEST_F(ServiceObject, FiniDeletesTheTaskWithItsLinks) {
  const Service service = load();
  Json::Value object(Json::objectValue);
  object["objId"] = object["parentId"] = "2";
  object["label"] = "City";
  object["nativeId"] = "NE=12";
  object["origin"] = "1";
  SubmapBufMgr::Instance()->refreshSubnetNameLink(std::vector<Json::Value>{object});
  SubmapBufMgr::Instance()->refreshDeviceSubnetNameLink(std::vector<Json::Value>{object});
  std::string link;
  SubmapBufMgr::Instance()->GetSubmapName(link, 12);
  ASSERT_EQ(link, "City");
  service->fini();
  SubmapBufMgr::Instance()->GetSubmapName(link, 12);
  EXPECT_EQ(link, "");
}

TEST_F(ServiceObject, FiniLeavesTheDeviceCacheAndTheIdleSingleton) {
  platform().rest.devices({emf::doubles::json(R"({"nativeId":"NE=12","name":"core-1"})")});
  TransmitAssistant* const assistant = TransmitAssistant::Instance();
  DeviceInfo* const devices = DeviceInfo::Instance();
  ASSERT_EQ(devices->setDeviceMap(), 1);
  const Service service = load();
  service->fini();
  Device device;
  EXPECT_EQ(DeviceInfo::Instance(), devices);
  EXPECT_EQ(devices->getDeviceByID(12, device), 1);
  EXPECT_EQ(device.name, "core-1");
  EXPECT_EQ(platform().rest.deviceReads(), 1);
  EXPECT_EQ(TransmitAssistant::Instance(), assistant);
  DeviceInfo::Destroy();
  TransmitAssistant::Destroy();
}

TEST_F(ServiceObject, WholeLifeCanBeRepeated) {
  for (int round = 0; round < 2; ++round) {
    platform().config.item("IsReportSubnet", 1);
    sleepGate().set(false);
    const Service service = load();
    ASSERT_EQ(service->init(0, nullptr), 0);
    EXPECT_EQ(exitService(*service), 0);
    EXPECT_EQ(service->fini(), 0);
    EXPECT_THAT(platform().database.calls(), Contains("Destroy"));
    clearSlot();
  }
}

}  // namespace
}  // namespace emf::test
