// The bundle manager: loads the services that the configuration names and drives their lives.
//
//   auto& manager = *NS_BUNDLEMGR1::BundleMgr::Instance();
//   auto report = manager.Start(*orma::Configuration::current());
//   for (auto& failure : report.failures) std::cerr << failure.service << ": " << failure.reason;
//   ...
//   manager.Stop();
//
// Thread-safety: the listing operations are thread-safe; Start and Stop belong to the host's main
// thread.
#pragma once

#include <functional>
#include <list>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "orma/bundle/log_proxy.h"
#include "orma/bundle/service_object_base.h"

namespace orma {
class Configuration;
struct ConfiguredService;
}  // namespace orma

namespace NS_BUNDLEMGR1 {

// One bundle: a named group of services. Lives until the process ends.
class ORMA_API Bundle {
 public:
  explicit Bundle(std::string name);
  ~Bundle();
  const std::string& GetName() const;
  // Fills `services` (replaced) by service name; borrowed until the service is unloaded.
  void GetServices(std::map<std::string, ServiceObjectBase*>& services) const;

 private:
  friend class BundleMgr;
  struct State;
  std::unique_ptr<State> state_;
};

// A service that could not be loaded or started, and why, in words for a person.
struct ServiceFailure {
  std::string bundle;
  std::string service;
  std::string reason;
};

struct StartReport {
  int started = 0;
  std::vector<ServiceFailure> failures;
  // False when a service failed and the configuration says to stop then; what had been started
  // is stopped again.
  bool running = true;
};

// Looks at the library of a service before its factory is called. `symbol` finds what the library
// exports, null where it does not. Gives what speaks against the library, in words, or nothing.
using LibraryCheck = std::function<std::string(
    const orma::ConfiguredService& service, const std::function<void*(const char* name)>& symbol)>;

class ORMA_API BundleMgr {
 public:
  static BundleMgr* Instance();

  // Every bundle, in configuration order; `bundles` is replaced.
  void GetBundles(std::list<Bundle*>& bundles);
  // The bundle of that name, or null.
  Bundle* FindBundle(const std::string& name);
  // The factory, or null when no log service has set one. Set to null to take it back.
  LogProxyFactory* GetLogProxyFactory();
  void SetLogProxyFactory(LogProxyFactory* factory);

  // Asked about each library that is loaded from then on; a library that it speaks against is a
  // failure of its service. Empty: none is asked. Belongs to the host's main thread.
  void SetLibraryCheck(LibraryCheck check);

  // Loads each service of the configuration in order: library, factory, init. Blocks in them.
  // No exception of a service leaves it: each becomes a failure.
  StartReport Start(const orma::Configuration& configuration);
  // In reverse order: ExitSvc of every service, then for each UnRegistSvc, fini, its filings
  // taken back, RemoveInterface, deleter, unload. Returns the failures it met. A second call
  // does nothing.
  std::vector<ServiceFailure> Stop();

 private:
  BundleMgr();
  ~BundleMgr();
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace NS_BUNDLEMGR1
