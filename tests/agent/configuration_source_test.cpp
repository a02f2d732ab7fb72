#include "configuration_source.h"

#include <gtest/gtest.h>

#include "temp_directory.h"

namespace ormaagent {
namespace {

constexpr char kDocument[] = R"({
  "onInitFailure": "stop",
  "text": {"characterSetSwitch": 1},
  "log": {"level": 2, "file": "agent.log", "stderr": false},
  "rest": {"tls": {"verify": false}, "maxAnswerBytes": 4294967296},
  "database": {"connection": "sqlite:net.db"},
  "items": {"IsReportSubnet": -1, "name": "text"},
  "bundles": [{"bundle": "b", "service": "s", "library": "l.so", "factory": "f"}]
})";

class ConfigurationSource : public testing::Test {
 protected:
  std::shared_ptr<const orma::Configuration> load(std::optional<int> logLevel) {
    return loadConfiguration(file_, logLevel, problems_);
  }

  emf::doubles::TempDirectory directory_;
  std::string file_ = directory_.write("agent.json", kDocument);
  std::vector<orma::ConfigProblem> problems_;
};

TEST_F(ConfigurationSource, WithoutAnOverrideTheFileHolds) {
  const auto configuration = load(std::nullopt);
  ASSERT_NE(configuration, nullptr);
  EXPECT_EQ(configuration->integer("log.level"), 2);
}

TEST_F(ConfigurationSource, TheOverrideReplacesTheLevel) {
  const auto configuration = load(0);
  ASSERT_NE(configuration, nullptr);
  EXPECT_EQ(configuration->integer("log.level"), 0);
}

TEST_F(ConfigurationSource, TheOverrideLeavesEverythingElse) {
  const auto plain = load(std::nullopt);
  const auto overridden = load(9);
  ASSERT_NE(plain, nullptr);
  ASSERT_NE(overridden, nullptr);
  for (const orma::ConfigKey& key : orma::configurationKeys()) {
    SCOPED_TRACE(key.path);
    switch (key.type) {
      case orma::ConfigType::Integer:
        if (std::string(key.path) == "log.level") break;
        EXPECT_EQ(overridden->integer(key.path), plain->integer(key.path));
        break;
      case orma::ConfigType::Boolean:
        EXPECT_EQ(overridden->boolean(key.path), plain->boolean(key.path));
        break;
      case orma::ConfigType::Path:
        EXPECT_EQ(overridden->path(key.path), plain->path(key.path));
        break;
      default:
        EXPECT_EQ(overridden->text(key.path), plain->text(key.path));
    }
  }
  EXPECT_EQ(overridden->items(), plain->items());
  EXPECT_EQ(overridden->absolutePath("net.db"), plain->absolutePath("net.db"));
  ASSERT_EQ(overridden->services().size(), 1u);
  EXPECT_EQ(overridden->services()[0].library, "l.so");
  EXPECT_EQ(overridden->services()[0].factory, "f");
}

TEST_F(ConfigurationSource, ProblemsOfTheFileAreTold) {
  directory_.write("agent.json", "{");
  EXPECT_EQ(load(3), nullptr);
  EXPECT_EQ(problems_.size(), 1u);
}

}  // namespace
}  // namespace ormaagent
