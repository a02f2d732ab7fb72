#include "settings.h"

#include "orma/bundle/configuration.h"

namespace orma::channel {

Settings::Settings(const Configuration& configuration)
    : host(configuration.text("faultServer.host")),
      port(static_cast<std::uint16_t>(configuration.integer("faultServer.port"))),
      process(static_cast<std::uint32_t>(configuration.integer("faultServer.process"))),
      connectTimeout(configuration.integer("faultServer.connectTimeoutMs")),
      receiveTimeout(configuration.integer("faultServer.receiveTimeoutMs")),
      maxFrameBytes(static_cast<std::size_t>(configuration.integer("faultServer.maxFrameBytes"))),
      maxFrames(static_cast<std::uint64_t>(configuration.integer("faultServer.maxFrames"))),
      tagging(configuration.text("faultServer.tagging") == "explicit" ? AsnTagging::Explicit
                                                                      : AsnTagging::Implicit) {}

}  // namespace orma::channel
