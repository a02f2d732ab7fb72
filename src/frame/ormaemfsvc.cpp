#include "ormaemfsvc.h"

#include <ace/ACE.h>
#include <ace/Assert.h>
#include <ace/OS_NS_stdio.h>

#include <memory>

#include "corbaemfinterface.h"
#include "emfglobal.h"
#include "orma/bundle/config_items.h"
#include "orma/bundle/interface_slot.h"
#include "submapbufmgr.h"

namespace {

constexpr char kSourceName[] = "ormaemfsvc";
constexpr char kBundleName[] = "ii_orma_corbaagent_bundle";
constexpr char kServiceName[] = "ii_ormaiac_emf";
constexpr char kInterfaceName[] = "ErrorCodeBufIf";
constexpr char kReportSubnetKey[] = "IsReportSubnet";

void deleteService(void* _p) {
  ACE_ASSERT(_p != 0);
  delete static_cast<ACE_Service_Object*>(_p);
}

}  // namespace

namespace NS_ORMACORBA {

ii_ormaiac_emf::ii_ormaiac_emf() : ServiceObjectBase(kBundleName, kServiceName) {}

ii_ormaiac_emf::~ii_ormaiac_emf() = default;

int ii_ormaiac_emf::ExitSvc() {
  ACE_OS::printf(
      "\n========== Exit Bundle Service ---[ ii_orma_corbaagent_bundle -- ii_ormaiac_emf ] "
      "==========\n");
  SubmapBufMgr* const task = SubmapBufMgr::Instance();
  return task != nullptr ? task->Stop() : -1;
}

NS_BUNDLEMGR1::ServiceInterface* ii_ormaiac_emf::CreateInterface() {
  m_interface = new ErrorCodeBufIfImpl;
  return m_interface;
}

int ii_ormaiac_emf::fini() {
  SubmapBufMgr::Destroy();
  CAEmfInterface::Fini();
  return 0;
}

int ii_ormaiac_emf::init(int, ACE_TCHAR*[]) {
  if (!CAEmfInterface::Init()) {
    EMF_PRINT(GetBaseLogProxy(), kSourceName, 1,
              "in [ii_ormaiac_emf::init] CAEmfInterface init failed!");
    return -1;
  }
  CAEmfMcdbErrorCodeMgr* const errorTexts = CAEmfMcdbErrorCodeMgr::Instance();
  if (errorTexts == nullptr || !errorTexts->Init()) {
    EMF_PRINT(GetBaseLogProxy(), kSourceName, 1,
              "in [ii_ormaiac_emf::init] CAEmfMcdbErrorCodeMgr init failed!");
    return -1;
  }
  int reportSubnet = 0;
  NS_BUNDLEMGR1::CorbaConfigItems::Instance()->GetIntItemInfo(kReportSubnetKey, reportSubnet);
  if (reportSubnet == 0) return 0;
  EMF_PRINT(GetBaseLogProxy(), kSourceName, 1,
            "in [ii_ormaiac_emf::init] SubmapBufMgr InitBuf start!");
  // A task that fails to start does not fail the service.
  if (SubmapBufMgr* const task = SubmapBufMgr::Instance()) task->InitBuf();
  return 0;
}

}  // namespace NS_ORMACORBA

ACE_Service_Object* _make_ii_ormaiac_emf(ACE_Service_Object_Exterminator* deleter) {
  if (deleter != nullptr) *deleter = deleteService;
  auto service = std::make_unique<NS_ORMACORBA::ii_ormaiac_emf>();
  auto errorTexts = std::unique_ptr<NS_BUNDLEMGR1::ServiceInterface>(service->CreateInterface());
  NS_BUNDLEMGR1::SetIFBuf(kInterfaceName, errorTexts.get());
  errorTexts.release();  // the service's own from here on
  return service.release();
}
