#include "serve_settings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host_failure.h"
#include "orma/bundle/configuration.h"

namespace ormaagent {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

std::shared_ptr<const orma::Configuration> configuration(const std::string& serve) {
  std::vector<orma::ConfigProblem> problems;
  auto parsed = orma::Configuration::parse("{\"serve\": {" + serve + "}}", "test", "", problems);
  for (const auto& problem : problems) ADD_FAILURE() << problem.where << ": " << problem.what;
  return parsed;
}

std::string faultOf(const std::string& serve) { return serveSettingsFault(*configuration(serve)); }

TEST(ServeSettings, NothingIsServedUnlessAPortIsGiven) {
  EXPECT_FALSE(ServeSettings(*configuration("")).isOn());
  const ServeSettings free(*configuration("\"port\": 0"));
  EXPECT_TRUE(free.isOn());
  EXPECT_EQ(free.address, "127.0.0.1");
}

TEST(ServeSettings, LoopbackAddressesAreTaken) {
  for (const char* address : {"127.0.0.1", "127.255.0.7", "::1"}) {
    EXPECT_THAT(faultOf(std::string("\"address\": \"") + address + "\""), IsEmpty()) << address;
  }
}

TEST(ServeSettings, OtherAddressesAreRefusedUnlessAllowed) {
  for (const char* address :
       {"0.0.0.0", "10.0.0.1", "128.0.0.1", "::", "fe80::1", "::ffff:127.0.0.1"}) {
    const std::string member = std::string("\"address\": \"") + address + "\"";
    EXPECT_THAT(faultOf(member), HasSubstr("serve.allowRemote")) << address;
    EXPECT_THAT(faultOf(member + ", \"allowRemote\": true"), IsEmpty()) << address;
  }
}

TEST(ServeSettings, NamesAreNoAddresses) {
  for (const char* address : {"", "localhost", "127.0.0.1:80", "[::1]"}) {
    EXPECT_THAT(faultOf(std::string("\"allowRemote\": true, \"address\": \"") + address + "\""),
                HasSubstr("must be an IPv4 or IPv6 address"))
        << address;
  }
}

TEST(ServeSettings, AFaultNamesTheKey) {
  try {
    const ServeSettings settings(*configuration("\"address\": \"localhost\""));
    FAIL() << "the address was taken";
  } catch (const HostFailure& failure) {
    EXPECT_THAT(failure.what(), testing::StartsWith("serve.address must be"));
    EXPECT_EQ(failure.exitStatus(), 2);
  }
}

}  // namespace
}  // namespace ormaagent
