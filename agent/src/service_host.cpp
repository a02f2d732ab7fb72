#include "service_host.h"

#include <list>
#include <map>
#include <utility>
#include <vector>

#include "message.h"
#include "orma/bundle/bundle_mgr.h"
#include "orma/log/log_sink.h"
#include "plugin_library.h"
#include "sleep_interrupter.h"
#include "waiting_for.h"

namespace ormaagent {

namespace {

using NS_BUNDLEMGR1::Bundle;
using NS_BUNDLEMGR1::BundleMgr;
using Services = std::map<std::string, NS_BUNDLEMGR1::ServiceObjectBase*>;

void tellFailures(const std::vector<NS_BUNDLEMGR1::ServiceFailure>& failures) {
  for (const auto& failure : failures) {
    tell("service " + failure.service + " of bundle " + failure.bundle + ": " + failure.reason);
  }
}

Services servicesOf(const Bundle& bundle) {
  Services services;
  bundle.GetServices(services);
  return services;
}

}  // namespace

ServiceHost::ServiceHost(std::shared_ptr<const orma::Configuration> configuration)
    : configuration_(std::move(configuration)) {
  orma::Configuration::install(configuration_);
  orma::configureLog(*configuration_);
}

ServiceHost::~ServiceHost() { stop(); }

bool ServiceHost::start() {
  started_ = true;
  const WaitingFor waiting("the services to start");
  const SleepInterrupter interrupter;  // a service that fails may take others with it
  BundleMgr::Instance()->SetLibraryCheck(interfaceFault);
  const auto report = BundleMgr::Instance()->Start(*configuration_);
  tellFailures(report.failures);
  return report.running;
}

bool ServiceHost::runsAny() const {
  std::list<Bundle*> bundles;
  BundleMgr::Instance()->GetBundles(bundles);
  for (const Bundle* bundle : bundles) {
    if (!servicesOf(*bundle).empty()) return true;
  }
  return false;
}

NS_BUNDLEMGR1::ServiceObjectBase* ServiceHost::find(const std::string& bundle,
                                                    const std::string& service) const {
  const Bundle* found = BundleMgr::Instance()->FindBundle(bundle);
  if (found == nullptr) return nullptr;
  const Services services = servicesOf(*found);
  const auto entry = services.find(service);
  return entry == services.end() ? nullptr : entry->second;
}

bool ServiceHost::stop() {
  if (!std::exchange(started_, false)) return true;
  const WaitingFor waiting("the services to stop");
  std::vector<NS_BUNDLEMGR1::ServiceFailure> failures;
  {
    const SleepInterrupter interrupter;
    failures = BundleMgr::Instance()->Stop();
  }
  tellFailures(failures);
  orma::flushLog();
  return failures.empty();
}

}  // namespace ormaagent
