// The "rest" section of one configuration, read once.
//
// Thread-safety: immutable.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>

namespace orma {
class Configuration;
}

namespace orma::rest {

struct Settings {
  explicit Settings(const Configuration& configuration);

  std::string baseUrl;       // without the slashes at its end
  std::string baseUrlFault;  // why baseUrl cannot be used; empty when it can
  std::chrono::milliseconds connectTimeout;
  std::chrono::milliseconds totalTimeout;
  std::uint64_t maxAnswerBytes;
  std::size_t maxNesting;
  std::size_t maxConnections;  // idle connections that are kept
  std::uint32_t devicePageSize;
  std::uint64_t maxPages;
  bool tlsVerify;
  std::string tlsCaFile;    // empty: the certificates that the system trusts
  std::string tlsCertFile;  // empty: no client certificate
  std::string tlsKeyFile;
  std::string tokenFile;         // wins over tokenEnvironment
  std::string tokenEnvironment;  // name of a variable
};

}  // namespace orma::rest
