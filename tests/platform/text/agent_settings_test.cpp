#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "orma/bundle/configuration.h"
#include "orma/text/text.h"

namespace {

std::shared_ptr<const orma::Configuration> configuration(const std::string& text) {
  std::vector<orma::ConfigProblem> problems;
  auto result = orma::Configuration::parse(text, "agent.json", ".", problems);
  for (const auto& problem : problems) ADD_FAILURE() << problem.where << ": " << problem.what;
  return result;
}

class AgentSettings : public ::testing::Test {
 protected:
  ~AgentSettings() override { orma::Configuration::install(configuration("{}")); }

  static std::string language() { return Ormacommon::OrmaMsg::instance()->getLanguage(); }
  static int characterSetSwitch() {
    return NS_ORMACORBA::CorbaAgentConfig::Instance()->GetCharacterSetSwitch();
  }
};

TEST_F(AgentSettings, DefaultsAreEnglishAndUtf8) {
  orma::Configuration::install(configuration("{}"));
  EXPECT_EQ(language(), "en_US");
  EXPECT_EQ(characterSetSwitch(), 0);
}

TEST_F(AgentSettings, EachCallReadsTheConfigurationThatIsInstalled) {
  orma::Configuration::install(
      configuration(R"({"text": {"language": "zh_CN", "characterSetSwitch": 1}})"));
  EXPECT_EQ(language(), "zh_CN");
  EXPECT_EQ(characterSetSwitch(), 1);
  orma::Configuration::install(configuration(R"({"text": {"characterSetSwitch": 2}})"));
  EXPECT_EQ(language(), "en_US");
  EXPECT_EQ(characterSetSwitch(), 2);
}

TEST_F(AgentSettings, SingletonsAreOne) {
  EXPECT_EQ(Ormacommon::OrmaMsg::instance(), Ormacommon::OrmaMsg::instance());
  EXPECT_EQ(NS_ORMACORBA::CorbaAgentConfig::Instance(), NS_ORMACORBA::CorbaAgentConfig::Instance());
}

TEST_F(AgentSettings, ThreadsReadWhileOthersInstall) {
  const auto chinese = configuration(R"({"text": {"language": "zh_CN", "characterSetSwitch": 1}})");
  const auto english = configuration(R"({"text": {"language": "en_US", "characterSetSwitch": 2}})");
  orma::Configuration::install(chinese);
  std::atomic<int> strangeValues{0};
  std::vector<std::thread> readers;
  for (int i = 0; i < 4; ++i) {
    readers.emplace_back([&strangeValues] {
      for (int round = 0; round < 2000; ++round) {
        const int value = characterSetSwitch();
        const std::string word = language();
        if ((value != 1 && value != 2) || (word != "zh_CN" && word != "en_US")) ++strangeValues;
      }
    });
  }
  for (int round = 0; round < 500; ++round) {
    orma::Configuration::install(round % 2 == 0 ? english : chinese);
  }
  for (std::thread& reader : readers) reader.join();
  EXPECT_EQ(strangeValues, 0);
}

}  // namespace
