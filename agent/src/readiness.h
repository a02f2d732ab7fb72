// Whether the process can do its work: what has to hold for it, condition by condition.
//
//   const Readiness now = readiness(pluginState);
//   respond(now.ready ? 200 : 503, now.text);
//
// Thread-safety: thread-safe. Nothing is thrown but std::bad_alloc.
#pragma once

#include <atomic>
#include <string>

namespace ormaagent {

enum class PluginState { kStarting, kRunning, kNotRunning };

struct Readiness {
  bool ready = false;
  // "ready" or "not ready", then a line for each condition: "rest: last exchange unreached, 3 s
  // ago".
  std::string text;
};

// The plug-in runs; a refresh of the subnet names has succeeded, where they are kept; and no
// outside service was out of reach when it was last asked. One that nobody asked yet counts as
// reachable and has no line.
Readiness readiness(PluginState plugin);

}  // namespace ormaagent
