// The "serve" section of one configuration: where health and metrics are offered.
//
// Thread-safety: immutable. The constructor throws HostFailure for an address that is none or not
// to be used.
#pragma once

#include <string>

namespace orma {
class Configuration;
}

namespace ormaagent {

struct ServeSettings {
  explicit ServeSettings(const orma::Configuration& configuration);

  bool isOn() const { return port >= 0; }

  std::string address;
  int port;  // 0: a free one; -1: none
};

// What is wrong with the section, in words; empty when nothing is.
std::string serveSettingsFault(const orma::Configuration& configuration);

}  // namespace ormaagent
