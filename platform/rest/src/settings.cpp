#include "settings.h"

#include <strings.h>

#include "orma/bundle/configuration.h"

namespace orma::rest {
namespace {

std::string withoutSlashesAtEnd(std::string text) {
  text.erase(text.find_last_not_of('/') + 1);
  return text;
}

bool beginsWith(const std::string& text, const char* prefix, std::size_t length) {
  return text.size() > length && ::strncasecmp(text.c_str(), prefix, length) == 0;
}

std::string faultOf(const std::string& baseUrl) {
  if (baseUrl.empty()) {
    return "rest.baseUrl is not set: give the address of the platform's REST service, for example "
           "http://127.0.0.1:8080";
  }
  if (!beginsWith(baseUrl, "http://", 7) && !beginsWith(baseUrl, "https://", 8)) {
    return "rest.baseUrl must begin with http:// or https:// and name a host";
  }
  for (const char c : baseUrl) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte <= 0x20 || byte == 0x7f || c == '?' || c == '#') {
      return "rest.baseUrl must not hold blanks, control characters, '?' or '#'";
    }
  }
  return std::string();
}

}  // namespace

Settings::Settings(const Configuration& configuration)
    : baseUrl(withoutSlashesAtEnd(configuration.text("rest.baseUrl"))),
      baseUrlFault(faultOf(baseUrl)),
      connectTimeout(configuration.integer("rest.connectTimeoutMs")),
      totalTimeout(configuration.integer("rest.totalTimeoutMs")),
      maxAnswerBytes(static_cast<std::uint64_t>(configuration.integer("rest.maxAnswerBytes"))),
      maxNesting(static_cast<std::size_t>(configuration.integer("rest.maxNesting"))),
      maxConnections(static_cast<std::size_t>(configuration.integer("rest.maxConnections"))),
      devicePageSize(static_cast<std::uint32_t>(configuration.integer("rest.devicePageSize"))),
      maxPages(static_cast<std::uint64_t>(configuration.integer("rest.maxPages"))),
      tlsVerify(configuration.boolean("rest.tls.verify")),
      tlsCaFile(configuration.path("rest.tls.caFile")),
      tlsCertFile(configuration.path("rest.tls.certFile")),
      tlsKeyFile(configuration.path("rest.tls.keyFile")),
      tokenFile(configuration.path("rest.token.file")),
      tokenEnvironment(configuration.text("rest.token.environment")) {}

}  // namespace orma::rest
