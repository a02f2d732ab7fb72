// Services that behave as a test wants, one factory for each behaviour, all noting what is asked
// of them.
#include <stdexcept>
#include <string>

#include "greeting_interface.h"
#include "journal.h"
#include "orma/bundle/interface_slot.h"
#include "orma/bundle/service_object_base.h"

namespace {

using scripted::note;

class Greeting : public GreetingInterface {
 public:
  explicit Greeting(std::string owner) : owner_(std::move(owner)) {}
  ~Greeting() override { note(owner_ + " interface deleted"); }
  std::string GetIFName() override { return owner_; }
  int IsValid() override { return 1; }

 private:
  std::string owner_;
};

// One member for each call that can go wrong: a number to give back, or a text to throw.
struct Outcome {
  int result = 0;
  const char* thrown = nullptr;

  int happen() const {
    if (thrown != nullptr) throw std::runtime_error(thrown);
    return result;
  }
};

struct Script {
  const char* name;
  Outcome init = {};
  Outcome exitService = {};
  Outcome unregister = {};
  Outcome fini = {};
  Outcome removeInterface = {};
  bool removesInterfaceInFini = false;
  const char* filesInInit = nullptr;
};

class ScriptedService : public NS_BUNDLEMGR1::ServiceObjectBase {
 public:
  explicit ScriptedService(const Script& script)
      : ServiceObjectBase("scripted_bundle", script.name), script_(script) {
    note(called("factory"));
    CreateInterface();
  }
  ~ScriptedService() override {
    delete m_interface;
    note(called("destroyed"));
  }

  int UnRegistSvc() override {
    note(called("UnRegistSvc"));
    return script_.unregister.happen();
  }
  int ExitSvc() override {
    note(called("ExitSvc"));
    return script_.exitService.happen();
  }
  NS_BUNDLEMGR1::ServiceInterface* CreateInterface() override {
    return m_interface = new Greeting(script_.name);
  }
  void RemoveInterface() override {
    note(called("RemoveInterface"));
    script_.removeInterface.happen();
    ServiceObjectBase::RemoveInterface();
  }
  int fini() override {
    note(called("fini"));
    if (script_.removesInterfaceInFini) ServiceObjectBase::RemoveInterface();
    return script_.fini.happen();
  }
  int init(int argc, ACE_TCHAR* argv[]) override {
    note(called("init") + (argc == 0 && argv != nullptr && argv[0] == nullptr ? "" : " with args"));
    if (script_.filesInInit != nullptr)
      NS_BUNDLEMGR1::SetIFBuf(script_.filesInInit, GetInterface());
    return script_.init.happen();
  }

 private:
  std::string called(const char* what) const { return std::string(script_.name) + " " + what; }
  const Script script_;
};

class NoService : public ACE_Service_Object {
 public:
  ~NoService() override { note("no service destroyed"); }
};

void deleteService(void* service) {
  note("deleter");
  delete static_cast<ACE_Service_Object*>(service);
}

void deleteAndThrow(void* service) {
  delete static_cast<ACE_Service_Object*>(service);
  throw std::runtime_error("deleter trouble");
}

ACE_Service_Object* make(const Script& script, void (**deleter)(void*)) {
  *deleter = deleteService;
  return new ScriptedService(script);
}

}  // namespace

#define FACTORY(name) extern "C" ORMA_API ACE_Service_Object* name(void (**deleter)(void*))

FACTORY(make_first) { return make({"first"}, deleter); }
FACTORY(make_second) { return make({"second"}, deleter); }
FACTORY(make_third) { return make({"third"}, deleter); }

FACTORY(make_without_deleter) {
  static_cast<void>(deleter);
  return new ScriptedService({"undeleted"});
}

FACTORY(make_throwing) {
  static_cast<void>(deleter);
  throw std::runtime_error("no licence");
}

FACTORY(make_throwing_number) {
  static_cast<void>(deleter);
  throw 42;
}

FACTORY(make_null) {
  static_cast<void>(deleter);
  return nullptr;
}

FACTORY(make_filing_then_throwing) {
  static_cast<void>(deleter);
  static Greeting greeting("left behind");
  NS_BUNDLEMGR1::SetIFBuf("scripted.filed", &greeting);
  throw std::runtime_error("changed my mind");
}

FACTORY(make_no_service) {
  *deleter = deleteService;
  return new NoService;
}

FACTORY(make_init_fails) {
  Script script{"sick"};
  script.init.result = -1;
  script.filesInInit = "scripted.filed";
  return make(script, deleter);
}

FACTORY(make_init_throws) {
  Script script{"sick"};
  script.init.thrown = "no disk";
  return make(script, deleter);
}

FACTORY(make_stop_gives_numbers) {
  Script script{"stubborn"};
  script.exitService.result = -1;
  script.unregister.result = 2;
  script.fini.result = 3;
  return make(script, deleter);
}

FACTORY(make_stop_throws) {
  Script script{"stubborn"};
  script.exitService.thrown = "exit trouble";
  script.unregister.thrown = "unregister trouble";
  script.fini.thrown = "fini trouble";
  script.removeInterface.thrown = "remove trouble";
  *deleter = deleteAndThrow;
  return new ScriptedService(script);
}

FACTORY(make_filing) {
  Script script{"filing"};
  script.filesInInit = "scripted.init";
  ACE_Service_Object* service = make(script, deleter);
  auto* base = dynamic_cast<NS_BUNDLEMGR1::ServiceObjectBase*>(service);
  NS_BUNDLEMGR1::SetIFBuf("scripted.factory", base->GetInterface());
  return service;
}

FACTORY(make_removing_in_fini) {
  Script script{"early"};
  script.removesInterfaceInFini = true;
  return make(script, deleter);
}
