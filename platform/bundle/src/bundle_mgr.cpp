#include "orma/bundle/bundle_mgr.h"

#include <ace/Guard_T.h>

#include <algorithm>
#include <atomic>
#include <utility>

#include "bundle_state.h"
#include "loaded_service.h"
#include "orma/bundle/configuration.h"
#include "orma/bundle/interface_slot.h"

namespace NS_BUNDLEMGR1 {

struct BundleMgr::State {
  std::mutex mutex;  // guards bundles and listed; never held while a service runs
  std::map<std::string, std::unique_ptr<Bundle>> bundles;
  std::vector<Bundle*> listed;
  std::atomic<LogProxyFactory*> proxyFactory{nullptr};
  LibraryCheck libraryCheck;                            // the main thread's
  std::vector<std::unique_ptr<LoadedService>> running;  // the main thread's, in starting order

  void listBundles(const std::vector<orma::ConfiguredService>& services);
  bool runs(const orma::ConfiguredService& configured) const;
  Reasons startOne(const orma::ConfiguredService& configured);
  void enlist(const LoadedService& service);
  void strike(const LoadedService& service);
};

namespace {

void append(std::vector<ServiceFailure>& failures, const orma::ConfiguredService& service,
            Reasons reasons) {
  for (std::string& reason : reasons) {
    failures.push_back({service.bundle, service.service, std::move(reason)});
  }
}

void append(Reasons& reasons, Reasons more) {
  std::move(more.begin(), more.end(), std::back_inserter(reasons));
}

}  // namespace

void BundleMgr::State::listBundles(const std::vector<orma::ConfiguredService>& services) {
  const std::lock_guard lock(mutex);
  listed.clear();
  for (const auto& service : services) {
    auto& bundle = bundles[service.bundle];
    if (!bundle) bundle = std::make_unique<Bundle>(service.bundle);
    if (std::find(listed.begin(), listed.end(), bundle.get()) == listed.end()) {
      listed.push_back(bundle.get());
    }
  }
}

bool BundleMgr::State::runs(const orma::ConfiguredService& configured) const {
  return std::any_of(running.begin(), running.end(), [&](const auto& one) {
    return one->configured().bundle == configured.bundle &&
           one->configured().service == configured.service;
  });
}

Reasons BundleMgr::State::startOne(const orma::ConfiguredService& configured) {
  if (runs(configured)) return {"is running already"};
  auto service = std::make_unique<LoadedService>(configured);
  Reasons reasons = service->load(libraryCheck);
  if (!reasons.empty()) return reasons;
  reasons = service->init();
  if (!reasons.empty()) {
    append(reasons, service->unload());
    return reasons;
  }
  enlist(*service);
  running.push_back(std::move(service));
  return {};
}

void BundleMgr::State::enlist(const LoadedService& service) {
  const std::lock_guard lock(mutex);
  Bundle::State& bundle = *bundles[service.configured().bundle]->state_;
  const std::lock_guard bundleLock(bundle.mutex);
  bundle.services[service.configured().service] = service.service();
}

// Whoever walks the services in search of an interface holds _g_actualmutex, so nobody files an
// interface of the service after this.
void BundleMgr::State::strike(const LoadedService& service) {
  ACE_Guard<ACE_Thread_Mutex> filling(_g_actualmutex);
  const std::lock_guard lock(mutex);
  Bundle::State& bundle = *bundles[service.configured().bundle]->state_;
  const std::lock_guard bundleLock(bundle.mutex);
  bundle.services.erase(service.configured().service);
}

BundleMgr::BundleMgr() : state_(std::make_unique<State>()) {}

BundleMgr::~BundleMgr() = default;

// Never destroyed: bundles live until the process ends.
BundleMgr* BundleMgr::Instance() {
  static auto* manager = new BundleMgr;
  return manager;
}

void BundleMgr::GetBundles(std::list<Bundle*>& bundles) {
  const std::lock_guard lock(state_->mutex);
  bundles.assign(state_->listed.begin(), state_->listed.end());
}

Bundle* BundleMgr::FindBundle(const std::string& name) {
  const std::lock_guard lock(state_->mutex);
  for (Bundle* bundle : state_->listed) {
    if (bundle->GetName() == name) return bundle;
  }
  return nullptr;
}

LogProxyFactory* BundleMgr::GetLogProxyFactory() { return state_->proxyFactory; }

void BundleMgr::SetLogProxyFactory(LogProxyFactory* factory) { state_->proxyFactory = factory; }

void BundleMgr::SetLibraryCheck(LibraryCheck check) { state_->libraryCheck = std::move(check); }

StartReport BundleMgr::Start(const orma::Configuration& configuration) {
  StartReport report;
  const bool stopOnFailure = configuration.text("onInitFailure") == "stop";
  state_->listBundles(configuration.services());
  for (const auto& configured : configuration.services()) {
    Reasons reasons = state_->startOne(configured);
    if (reasons.empty()) {
      ++report.started;
      continue;
    }
    append(report.failures, configured, std::move(reasons));
    if (!stopOnFailure) continue;
    std::vector<ServiceFailure> stopping = Stop();
    std::move(stopping.begin(), stopping.end(), std::back_inserter(report.failures));
    report.running = false;
    break;
  }
  return report;
}

std::vector<ServiceFailure> BundleMgr::Stop() {
  std::vector<ServiceFailure> failures;
  // Taken out first, so that a Stop from within a service's own stopping finds nothing to do.
  auto services = std::exchange(state_->running, {});
  std::reverse(services.begin(), services.end());
  for (const auto& service : services) {
    append(failures, service->configured(), service->exitService());
  }
  for (const auto& service : services) {
    append(failures, service->configured(), service->unregister());
    state_->strike(*service);
    append(failures, service->configured(), service->unload());
  }
  return failures;
}

}  // namespace NS_BUNDLEMGR1
