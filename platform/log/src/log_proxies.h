// Every log proxy that was ever handed out, by key.
//
// Thread-safety: thread-safe. Lives until the process ends, whatever becomes of the log service.
#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <string>

#include "orma/bundle/log_proxy.h"

namespace NS_LOG_SERVICE1 {

class SinkLogProxies : public NS_BUNDLEMGR1::LogProxyFactory {
 public:
  static SinkLogProxies& instance();

  NS_BUNDLEMGR1::LogProxy* CreateLogProxy(const char* key) override;

 private:
  std::mutex mutex_;  // guards proxies_
  std::map<std::string, std::unique_ptr<NS_BUNDLEMGR1::LogProxy>> proxies_;
};

}  // namespace NS_LOG_SERVICE1
