// Services that misbehave in one way each, for the tests of the host.
#include <ace/Service_Object.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <ctime>
#include <stdexcept>
#include <thread>

#include "orma/bundle/service_object_base.h"

namespace {

class ScriptedService : public NS_BUNDLEMGR1::ServiceObjectBase {
 public:
  explicit ScriptedService(const char* name) : ServiceObjectBase("scripted", name) {}
  int init(int, ACE_TCHAR*[]) override { return 0; }
  int ExitSvc() override { return 0; }
  NS_BUNDLEMGR1::ServiceInterface* CreateInterface() override { return nullptr; }
};

// Its thread sleeps half an hour at a time and looks at the stop flag in between.
class SleepingService : public ScriptedService {
 public:
  SleepingService() : ScriptedService("sleeping") {}

  int init(int, ACE_TCHAR*[]) override {
    thread_ = std::thread([this] {
      while (!stopping_) {
        const timespec interval{1800, 0};
        static_cast<void>(::nanosleep(&interval, nullptr));
      }
    });
    return 0;
  }

  int ExitSvc() override {
    stopping_ = true;
    thread_.join();
    return 0;
  }

 private:
  std::atomic<bool> stopping_{false};
  std::thread thread_;
};

// Never comes back from stopping.
class StuckService : public ScriptedService {
 public:
  StuckService() : ScriptedService("stuck") {}
  int ExitSvc() override {
    for (;;) {
      const timespec interval{1800, 0};
      static_cast<void>(::nanosleep(&interval, nullptr));
    }
  }
};

class PrintingService : public ScriptedService {
 public:
  PrintingService() : ScriptedService("printing") {}
  int init(int, ACE_TCHAR*[]) override {
    std::printf("printed by init\n");
    return 0;
  }
  int ExitSvc() override {
    std::printf("printed by ExitSvc\n");
    return 0;
  }
};

class RefusingService : public ScriptedService {
 public:
  RefusingService() : ScriptedService("refusing") {}
  int init(int, ACE_TCHAR*[]) override { return -1; }
};

class FailingExitService : public ScriptedService {
 public:
  FailingExitService() : ScriptedService("failing") {}
  int ExitSvc() override { return -1; }
};

void destroy(void* service) { delete static_cast<ACE_Service_Object*>(service); }

template <class Service>
ACE_Service_Object* make(void (**deleter)(void*)) {
  *deleter = destroy;
  return new Service;
}

}  // namespace

#define SCRIPTED_FACTORY extern "C" __attribute__((visibility("default"))) ACE_Service_Object*

SCRIPTED_FACTORY makeScripted(void (**deleter)(void*)) {
  *deleter = destroy;
  return new ScriptedService("scripted");
}
SCRIPTED_FACTORY makeSleeping(void (**deleter)(void*)) { return make<SleepingService>(deleter); }
SCRIPTED_FACTORY makeStuck(void (**deleter)(void*)) { return make<StuckService>(deleter); }
SCRIPTED_FACTORY makePrinting(void (**deleter)(void*)) { return make<PrintingService>(deleter); }
SCRIPTED_FACTORY makeRefusing(void (**deleter)(void*)) { return make<RefusingService>(deleter); }
SCRIPTED_FACTORY makeFailingExit(void (**deleter)(void*)) {
  return make<FailingExitService>(deleter);
}
SCRIPTED_FACTORY makeThrowing(void (**)(void*)) {
  throw std::runtime_error("the scripted factory throws");
}
