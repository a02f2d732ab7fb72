#include "platform.h"

namespace emf::doubles {

void Platform::reset() {
  trace.reset();
  log.reset();
  bundles.reset();
  proxies.reset();
  config.reset();
  text.reset();
  rest.reset();
  alarms.reset();
  resources.reset();
  database.reset();
  cursors.reset();
  southbound.reset();
  channel.reset();
  journal.reset();
}

// Never destroyed: the plug-in's own statics may still call it at exit.
Platform& platform() {
  static auto* instance = [] {
    auto* made = new Platform;
    made->rest.reset();
    return made;
  }();
  return *instance;
}

}  // namespace emf::doubles
