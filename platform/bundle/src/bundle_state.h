// The services of a bundle that are started, as the listing operations see them.
#pragma once

#include <map>
#include <mutex>
#include <string>

#include "orma/bundle/bundle_mgr.h"

namespace NS_BUNDLEMGR1 {

struct Bundle::State {
  std::string name;
  mutable std::mutex mutex;  // guards services
  std::map<std::string, ServiceObjectBase*> services;
};

}  // namespace NS_BUNDLEMGR1
