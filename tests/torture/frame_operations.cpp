// The error table and the life of the service.
#include <memory>

#include "captured_output.h"
#include "corbaemfinterface.h"
#include "operation.h"
#include "orma/bundle/interface_slot.h"
#include "ormaemfsvc.h"
#include "platform.h"
#include "sleeps.h"
#include "submapbufmgr.h"
#include "subnet_network.h"
#include "temp_directory.h"

namespace emf::torture {
namespace {

using doubles::platform;
using NS_BUNDLEMGR1::ServiceObjectBase;

const std::string kErrorText = "a text of an error that takes memory of its own";
constexpr unsigned long kCode = 5;

void scriptResourceFiles() {
  static const doubles::TempDirectory& installation = *[] {
    static doubles::TempDirectory made;
    made.write("etc/nbires/en_US/errcode_ACCESS_TDT.res", "5=replaced\n");
    made.write("etc/nbires/en_US/other_errcode_of_a_long_name.res", "0x5=" + kErrorText + "\n");
    std::filesystem::create_directories(made.path() / "agent");
    return &made;
  }();
  platform().config.environment(installation.path() / "agent");
  platform().proxies.present();
}

std::string textOfCode() {
  std::string text;
  ErrorCodeBufIfImpl().GetErrorInfo(text, kCode);
  return text;
}

Outcome loadTable(const Fault& fault) {
  scriptResourceFiles();
  CAEmfMcdbErrorCodeMgr& table = *CAEmfMcdbErrorCodeMgr::Instance();
  Outcome outcome;
  outcome.result =
      resultOf(fault, outcome.struck, [&table] { return static_cast<int>(table.Init()); });
  outcome.records = {textOfCode()};
  return outcome;
}

// What a file that cannot be read leaves of the texts.
const std::map<std::string, Texts> kLostTexts = {{kErrorText, {"replaced", "unknown"}}};

// A service as the bundle manager has it.
class Service {
 public:
  Service() {
    scriptResourceFiles();
    platform().config.item("IsReportSubnet", 1);
    network(kNewCity);
    holdSleeps();
  }
  Service(const Service&) = delete;
  Service& operator=(const Service&) = delete;
  ~Service() {
    if (made_ != nullptr) unload();
    letSleepsGo();
  }

  void make() { made_ = _make_ii_ormaiac_emf(&exterminate_); }
  int init() { return made_->init(0, nullptr); }
  int exit() { return service().ExitSvc(); }
  int fini() { return made_->fini(); }
  // The error text that another bundle gets, and the link when the task has had its first refresh.
  Texts served() {
    if (SubmapBufMgr::Instance()->thr_count() > 0) awaitSleep();
    std::string text = "no interface";
    auto* errors = dynamic_cast<ErrorCodeBufIf*>(slot().front());
    if (errors != nullptr) errors->GetErrorInfo(text, kCode);
    return {text, linkOfDevice()};
  }

 private:
  static NS_BUNDLEMGR1::InterfaceSlot& slot() {
    return *NS_BUNDLEMGR1::CheckIFBuf("ErrorCodeBufIf");
  }
  ServiceObjectBase& service() { return dynamic_cast<ServiceObjectBase&>(*made_); }
  void unload() {
    letSleepsGo();
    SubmapBufMgr::Instance()->Stop();
    slot().remove(service().GetInterface());
    service().RemoveInterface();
    exterminate_(made_);
  }

  ACE_Service_Object_Exterminator exterminate_ = nullptr;
  ACE_Service_Object* made_ = nullptr;
};

Outcome makeService(const Fault& fault) {
  Service service;
  Outcome outcome;
  outcome.result = resultOf(fault, outcome.struck, [&service] { service.make(); });
  // Nothing is filed that is gone.
  auto* const filed = NS_BUNDLEMGR1::CheckIFBuf("ErrorCodeBufIf")->front();
  outcome.records = {filed != nullptr ? filed->GetIFName() : "nothing is filed"};
  return outcome;
}

Outcome initService(const Fault& fault) {
  Service service;
  service.make();
  Outcome outcome;
  outcome.result = resultOf(fault, outcome.struck, [&service] { return service.init(); });
  outcome.records = service.served();
  return outcome;
}

Outcome exitService(const Fault& fault) {
  const CapturedOutput output;
  Service service;
  service.make();
  service.init();
  service.served();
  letSleepsGo();
  Outcome outcome;
  outcome.result = resultOf(fault, outcome.struck, [&service] { return service.exit(); });
  outcome.records = {std::to_string(SubmapBufMgr::Instance()->thr_count()) + " threads"};
  return outcome;
}

Outcome finishService(const Fault& fault) {
  const CapturedOutput output;
  Service service;
  service.make();
  service.init();
  letSleepsGo();
  service.exit();
  Outcome outcome;
  outcome.result = resultOf(fault, outcome.struck, [&service] { return service.fini(); });
  outcome.records = {platform().database.engineExists() ? "an engine" : "no engine"};
  return outcome;
}

const std::string kLink = linkWith(kNewCity);

}  // namespace

const std::vector<Operation>& frameOperations() {
  static const std::vector<Operation> rows = {
      {"CAEmfMcdbErrorCodeMgr::Init",
       loadTable,
       {"1", {kErrorText}, {}},
       Left::kWhole,
       {{"environment", {"1"}},
        {"directory", {"1"}},
        {"directory entry", {"1"}},
        {"path", {"1"}},
        {"descriptor", {"1"}},
        {"file status", {"1"}},
        {"stream", {"1"}}},
       {},
       kLostTexts,
       1},
      {"ErrorCodeBufIf::GetErrorInfo",
       calling(scriptNothing, std::string("left over"),
               [](auto& out) { ErrorCodeBufIfImpl().GetErrorInfo(out, kCode); }),
       {"done", {"unknown"}, {}},
       Left::kAnything},
      {"_make_ii_ormaiac_emf",
       makeService,
       {"done", {"ErrorCodeBufIfImpl"}, {}},
       Left::kWhole,
       {},
       {},
       {{"ErrorCodeBufIfImpl", {"nothing is filed"}}},
       1},
      {"ii_ormaiac_emf::init",
       initService,
       {"0", {kErrorText, kLink}, {}},
       Left::kWhole,
       {{"environment", {"0"}},
        {"directory", {"0"}},
        {"directory entry", {"0"}},
        {"path", {"0"}},
        {"descriptor", {"0"}},
        {"file status", {"0"}},
        {"stream", {"0"}},
        {"configuration item", {"0"}},
        {"mutex", {"-1|0"}}},
       {"0"},
       {{kErrorText, {"replaced", "unknown"}}, {kLink, {""}}},
       2},
      {"ii_ormaiac_emf::ExitSvc",
       exitService,
       {"0", {"0 threads"}, {}},
       Left::kStart,
       {},
       {"-1"},
       {},
       1},
      {"ii_ormaiac_emf::fini",
       finishService,
       {"0", {"no engine"}, {}},
       Left::kWhole,
       {{"mutex", {"0"}}},
       {},
       {{"no engine", {"an engine"}}},
       1},
  };
  return rows;
}

}  // namespace emf::torture
