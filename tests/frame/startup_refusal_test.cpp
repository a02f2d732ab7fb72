// The start-up steps refuse, and the filing throws: none of them does so by itself, so the linker
// puts scripted ones in their place.
#include <stdexcept>

#include "service_fixture.h"

namespace {

bool interfaceInit = true;
bool tableInit = true;
bool filingThrows = false;

}  // namespace

extern "C" {
bool __wrap__ZN14CAEmfInterface4InitEv() { return interfaceInit; }

bool __wrap__ZN21CAEmfMcdbErrorCodeMgr4InitEv(CAEmfMcdbErrorCodeMgr*) { return tableInit; }

void __real__ZN13NS_BUNDLEMGR18SetIFBufERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEEPNS_16ServiceInterfaceE(
    const std::string&, NS_BUNDLEMGR1::ServiceInterface*);
void __wrap__ZN13NS_BUNDLEMGR18SetIFBufERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEEPNS_16ServiceInterfaceE(
    const std::string& name, NS_BUNDLEMGR1::ServiceInterface* interface) {
  if (filingThrows) throw std::runtime_error("no room to file");
  __real__ZN13NS_BUNDLEMGR18SetIFBufERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEEPNS_16ServiceInterfaceE(
      name, interface);
}
}

namespace emf::test {
namespace {

using emf::doubles::platform;
using ::testing::_;
using ::testing::ElementsAre;
using ::testing::FieldsAre;
using ::testing::IsEmpty;

class StartupRefusal : public ServiceTest {
 protected:
  StartupRefusal() {
    interfaceInit = true;
    tableInit = true;
    filingThrows = false;
    platform().config.item("IsReportSubnet", 1);
  }

  static auto announces(const char* text) {
    return ElementsAre(
        FieldsAre("ii_base_bundleii_base_log", _, _, "ormaemfsvc", ::testing::Gt(0), 1, text));
  }
};

TEST_F(StartupRefusal, RefusingInterfaceStopsInit) {
  interfaceInit = false;
  const Service service = load();
  EXPECT_EQ(service->init(0, nullptr), -1);
  EXPECT_THAT(platform().proxies.lines(),
              announces("in [ii_ormaiac_emf::init] CAEmfInterface init failed!"));
  EXPECT_THAT(platform().config.itemQuestions(), IsEmpty());
  EXPECT_THAT(platform().trace.lines(), IsEmpty());
  EXPECT_EQ(SubmapBufMgr::Instance()->thr_count(), 0U);
}

TEST_F(StartupRefusal, RefusingTableStopsInit) {
  tableInit = false;
  const Service service = load();
  EXPECT_EQ(service->init(0, nullptr), -1);
  EXPECT_THAT(platform().proxies.lines(),
              announces("in [ii_ormaiac_emf::init] CAEmfMcdbErrorCodeMgr init failed!"));
  EXPECT_THAT(platform().config.itemQuestions(), IsEmpty());
  EXPECT_THAT(platform().trace.lines(), IsEmpty());
  EXPECT_EQ(SubmapBufMgr::Instance()->thr_count(), 0U);
}

TEST_F(StartupRefusal, InterfaceIsAskedBeforeTheTable) {
  interfaceInit = false;
  tableInit = false;
  const Service service = load();
  EXPECT_EQ(service->init(0, nullptr), -1);
  EXPECT_THAT(platform().proxies.lines(),
              announces("in [ii_ormaiac_emf::init] CAEmfInterface init failed!"));
}

TEST_F(StartupRefusal, ServiceOutlivesTheRefusal) {
  interfaceInit = false;
  const Service service = load();
  ASSERT_EQ(service->init(0, nullptr), -1);
  EXPECT_EQ(askForText(5), "unknown");
  EXPECT_EQ(service->fini(), 0);
}

TEST_F(StartupRefusal, ExceptionOfTheFilingLeavesTheFactory) {
  filingThrows = true;
  ACE_Service_Object_Exterminator exterminate = nullptr;
  EXPECT_THROW(_make_ii_ormaiac_emf(&exterminate), std::runtime_error);
  EXPECT_NE(exterminate, nullptr);
  EXPECT_THAT(slot().snapshot(), IsEmpty());
}

}  // namespace
}  // namespace emf::test
