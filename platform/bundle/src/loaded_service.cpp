#include "loaded_service.h"

#include <dlfcn.h>

#include <exception>
#include <utility>

namespace NS_BUNDLEMGR1 {

namespace {

// Unresolved symbols show at once, as a failed load, rather than in the middle of a call. The
// symbols stay local: two service libraries may use one name. dynamic_cast and exceptions work
// across libraries all the same, since every shared class has its type information in one library
// that both sides link, and the run-time library compares the names of any that has not.
constexpr int kOpenMode = RTLD_NOW | RTLD_LOCAL;

// Runs a call of the service; what it threw becomes a reason. The text is copied before the
// exception goes, for its class may live in the library that is about to be closed.
template <typename Call>
void fenced(const std::string& what, Reasons& reasons, Call&& call) {
  try {
    std::forward<Call>(call)();
  } catch (const std::exception& thrown) {
    reasons.push_back(what + " threw: " + thrown.what());
  } catch (...) {
    reasons.push_back(what + " threw something that is no std::exception");
  }
}

template <typename Call>
void fencedResult(const std::string& what, Reasons& reasons, Call&& call) {
  fenced(what, reasons, [&] {
    const int result = call();
    if (result != 0) reasons.push_back(what + " gave " + std::to_string(result));
  });
}

// The loader's words on one line; it has one line for each file name that it tried.
std::string lastError(const ACE_DLL& library) {
  const ACE_TCHAR* error = library.error();
  std::string text = error == nullptr ? "no reason given" : error;
  for (auto feed = text.find('\n'); feed != std::string::npos; feed = text.find('\n')) {
    text.replace(feed, 1, "; ");
  }
  return text;
}

}  // namespace

LoadedService::LoadedService(const orma::ConfiguredService& configured) : configured_(configured) {}

Reasons LoadedService::load(const LibraryCheck& check) {
  Reasons reasons;
  if (library_.open(configured_.library.c_str(), kOpenMode) != 0) {
    reasons.push_back("cannot load the library \"" + configured_.library +
                      "\": " + lastError(library_));
    return reasons;
  }
  examine(check, reasons);
  const Factory factory = reasons.empty() ? findFactory(reasons) : nullptr;
  if (factory != nullptr) create(factory, reasons);
  if (!reasons.empty()) {
    takeBack(filings_, {});
    destroyObject(reasons);
    closeLibrary();
  }
  return reasons;
}

void LoadedService::examine(const LibraryCheck& check, Reasons& reasons) {
  if (!check) return;
  const auto symbol = [this](const char* name) { return library_.symbol(name); };
  std::string fault = check(configured_, symbol);
  if (!fault.empty()) reasons.push_back(std::move(fault));
}

LoadedService::Factory LoadedService::findFactory(Reasons& reasons) {
  void* symbol = library_.symbol(configured_.factory.c_str());
  if (symbol == nullptr) {
    reasons.push_back("the library \"" + configured_.library + "\" has no factory \"" +
                      configured_.factory + "\": " + lastError(library_));
  }
  return reinterpret_cast<Factory>(symbol);
}

void LoadedService::create(Factory factory, Reasons& reasons) {
  const std::string what = "the factory \"" + configured_.factory + "\"";
  const FilingScope scope(filings_);
  fenced(what, reasons, [&] { object_ = factory(&deleter_); });
  if (!reasons.empty()) return;
  if (object_ == nullptr) {
    reasons.push_back(what + " gave no object");
    return;
  }
  service_ = dynamic_cast<ServiceObjectBase*>(object_);
  if (service_ == nullptr) {
    reasons.push_back(what +
                      " gave an object that is no service: its class does not derive from "
                      "NS_BUNDLEMGR1::ServiceObjectBase");
  }
}

Reasons LoadedService::init() {
  Reasons reasons;
  const FilingScope scope(filings_);
  ACE_TCHAR* noArguments[] = {nullptr};
  fencedResult("init", reasons, [&] { return service_->init(0, noArguments); });
  return reasons;
}

Reasons LoadedService::exitService() {
  Reasons reasons;
  fencedResult("ExitSvc", reasons, [&] { return service_->ExitSvc(); });
  return reasons;
}

Reasons LoadedService::unregister() {
  Reasons reasons;
  fencedResult("UnRegistSvc", reasons, [&] { return service_->UnRegistSvc(); });
  return reasons;
}

Reasons LoadedService::unload() {
  Reasons reasons;
  // Others may have filed the interface too; fini may clear it, so it is asked for on both sides.
  std::vector<ServiceInterface*> offered;
  const auto noteInterface = [&] { offered.push_back(service_->GetInterface()); };
  fenced("GetInterface", reasons, noteInterface);
  fencedResult("fini", reasons, [&] { return service_->fini(); });
  fenced("GetInterface", reasons, noteInterface);
  takeBack(filings_, offered);
  fenced("RemoveInterface", reasons, [&] { service_->RemoveInterface(); });
  destroyObject(reasons);
  closeLibrary();
  return reasons;
}

void LoadedService::destroyObject(Reasons& reasons) {
  ACE_Service_Object* object = std::exchange(object_, nullptr);
  service_ = nullptr;
  if (object == nullptr) return;
  // The deleter takes the very pointer that the factory gave.
  fenced("the deleter", reasons, [&] { deleter_ != nullptr ? deleter_(object) : delete object; });
}

// Releases the library. ACE keeps one that is linked with ACE mapped until the process ends, and so
// stays valid whatever its service leaves behind for that long.
void LoadedService::closeLibrary() {
  filings_.clear();
  library_.close();
}

}  // namespace NS_BUNDLEMGR1
