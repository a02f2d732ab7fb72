// The host and plug-ins of another interface version.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "plugin_library.h"
#include "service_host.h"

namespace ormaagent {
namespace {

using testing::HasSubstr;

// A configuration whose plug-in is that library.
std::shared_ptr<const orma::Configuration> configuration(const std::string& library,
                                                         const std::string& onInitFailure) {
  std::vector<orma::ConfigProblem> problems;
  auto parsed = orma::Configuration::parse(
      R"({"onInitFailure": ")" + onInitFailure +
          R"(", "bundles": [{"bundle": "ii_orma_corbaagent_bundle", "service": "ii_ormaiac_emf",
              "library": ")" +
          library + R"(", "factory": "_make_ii_ormaiac_emf"}]})",
      "test", "", problems);
  for (const auto& problem : problems) ADD_FAILURE() << problem.where << ": " << problem.what;
  return parsed;
}

class InterfaceVersion : public testing::Test {
 protected:
  ~InterfaceVersion() override { orma::Configuration::install(nullptr); }

  struct Started {
    bool started = false;
    bool runsAny = false;
    std::string messages;
  };

  static Started start(const std::string& library, const std::string& onInitFailure) {
    ServiceHost host(configuration(library, onInitFailure));
    testing::internal::CaptureStderr();
    Started result;
    result.started = host.start();
    result.messages = testing::internal::GetCapturedStderr();
    result.runsAny = host.runsAny();
    return result;
  }
};

TEST_F(InterfaceVersion, APluginOfAnotherOneIsRefusedBeforeItsFactoryIsCalled) {
  const Started result = start(PLUGIN_OF_VERSION_2, "continue");
  EXPECT_THAT(result.messages,
              HasSubstr("service ii_ormaiac_emf of bundle "
                        "ii_orma_corbaagent_bundle: the library \"" +
                        std::string(PLUGIN_OF_VERSION_2) +
                        "\" has interface version 2, but this program was built "
                        "for version 1; install plug-in and agent of one release"));
  EXPECT_FALSE(result.runsAny);
}

TEST_F(InterfaceVersion, APluginWithoutOneIsRefused) {
  const Started result = start(PLUGIN_WITHOUT_VERSION, "continue");
  EXPECT_THAT(result.messages, HasSubstr("has no interface version, but this program was built for "
                                         "version 1"));
  EXPECT_FALSE(result.runsAny);
}

TEST_F(InterfaceVersion, ARefusedPluginIsAFailureLikeAnyOther) {
  EXPECT_TRUE(start(PLUGIN_OF_VERSION_2, "continue").started);
  EXPECT_FALSE(start(PLUGIN_OF_VERSION_2, "stop").started);
}

TEST_F(InterfaceVersion, ThePluginItselfHasTheRightOne) {
  const Started result = start(PLUGIN, "stop");
  EXPECT_TRUE(result.started) << result.messages;
  EXPECT_TRUE(result.runsAny);
}

TEST_F(InterfaceVersion, OtherServicesNeedNone) {
  const orma::ConfiguredService other{"ii_log_bundle", "ii_log_service", "liborma_log.so.1",
                                      "make"};
  EXPECT_EQ(interfaceFault(other, [](const char*) -> void* { return nullptr; }), "");
}

}  // namespace
}  // namespace ormaagent
