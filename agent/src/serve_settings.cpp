#include "serve_settings.h"

#include <arpa/inet.h>

#include "exit_status.h"
#include "host_failure.h"
#include "orma/bundle/configuration.h"

namespace ormaagent {

namespace {

constexpr char kAddress[] = "serve.address";

enum class Reach { kNoAddress, kLoopback, kFurther };

Reach reachOf(const std::string& address) {
  in_addr four{};
  in6_addr six{};
  if (::inet_pton(AF_INET, address.c_str(), &four) == 1) {
    const bool loopback = ntohl(four.s_addr) >> 24 == 127;
    return loopback ? Reach::kLoopback : Reach::kFurther;
  }
  if (::inet_pton(AF_INET6, address.c_str(), &six) != 1) return Reach::kNoAddress;
  return IN6_IS_ADDR_LOOPBACK(&six) ? Reach::kLoopback : Reach::kFurther;
}

}  // namespace

std::string serveSettingsFault(const orma::Configuration& configuration) {
  switch (reachOf(configuration.text(kAddress))) {
    case Reach::kNoAddress:
      return "must be an IPv4 or IPv6 address, such as 127.0.0.1 or ::1";
    case Reach::kFurther:
      if (configuration.boolean("serve.allowRemote")) return "";
      return "is no loopback address, and the endpoint knows neither TLS nor users; set "
             "serve.allowRemote to true if other hosts are to reach it all the same";
    default:
      return "";
  }
}

ServeSettings::ServeSettings(const orma::Configuration& configuration)
    : address(configuration.text(kAddress)),
      port(static_cast<int>(configuration.integer("serve.port"))) {
  const std::string fault = serveSettingsFault(configuration);
  if (!fault.empty()) throw HostFailure(kExitUsage, std::string(kAddress) + " " + fault);
}

}  // namespace ormaagent
