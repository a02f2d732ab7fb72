// The services of the configuration while a command runs.
//
//   ServiceHost host(*configuration);  // installs the configuration, opens the log
//   if (!host.start()) return kExitUsage;
//   ...
//   host.stop();  // the destructor does it, too
//
// What goes wrong is told on standard error, service by service.
//
// Thread-safety: thread-compatible; one at a time, on the main thread.
#pragma once

#include <memory>
#include <string>

#include "orma/bundle/configuration.h"

namespace NS_BUNDLEMGR1 {
class ServiceObjectBase;
}

namespace ormaagent {

class ServiceHost {
 public:
  // Makes `configuration` the process's own. Throws std::runtime_error when the log file cannot be
  // opened.
  explicit ServiceHost(std::shared_ptr<const orma::Configuration> configuration);
  ServiceHost(const ServiceHost&) = delete;
  ServiceHost& operator=(const ServiceHost&) = delete;
  ~ServiceHost();

  // Starts every service. False when one failed and the configuration says to stop then; nothing
  // runs in that case. Blocks in the services.
  bool start();
  bool runsAny() const;
  // A running service, borrowed until stop; null when it does not run.
  NS_BUNDLEMGR1::ServiceObjectBase* find(const std::string& bundle,
                                         const std::string& service) const;
  // Stops every service, waking those of their threads that sleep. False when one reported
  // failure. A second call does nothing.
  bool stop();

 private:
  std::shared_ptr<const orma::Configuration> configuration_;
  bool started_ = false;
};

}  // namespace ormaagent
