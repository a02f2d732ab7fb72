#include "orma/bundle/configuration.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <set>
#include <thread>

#include "config_problems.h"

namespace orma {
namespace {

using testing::ElementsAre;

std::string valueOf(const Configuration& configuration, const ConfigKey& key) {
  switch (key.type) {
    case ConfigType::Text:
    case ConfigType::Choice:
      return configuration.text(key.path);
    case ConfigType::Path:
      return configuration.path(key.path);
    case ConfigType::Integer:
      return std::to_string(configuration.integer(key.path));
    case ConfigType::Boolean:
      return configuration.boolean(key.path) ? "true" : "false";
  }
  return "";
}

void expectDefaults(const Configuration& configuration) {
  for (const ConfigKey& key : configurationKeys()) {
    EXPECT_EQ(valueOf(configuration, key), key.defaultText) << key.path;
  }
}

TEST(ConfigurationKeys, EachPathStandsOnce) {
  std::set<std::string> paths;
  for (const ConfigKey& key : configurationKeys()) {
    EXPECT_TRUE(paths.insert(key.path).second) << key.path;
    EXPECT_STRNE(key.meaning, "") << key.path;
  }
}

TEST(ConfigurationKeys, NoPathIsASectionOfAnother) {
  for (const ConfigKey& outer : configurationKeys()) {
    for (const ConfigKey& inner : configurationKeys()) {
      EXPECT_NE(std::string(inner.path).rfind(std::string(outer.path) + ".", 0), 0u)
          << outer.path << " " << inner.path;
    }
  }
}

TEST(ConfigurationKeys, EachDefaultIsAllowed) {
  for (const ConfigKey& key : configurationKeys()) {
    if (key.type == ConfigType::Integer) {
      EXPECT_GE(std::stoll(key.defaultText), key.minimum) << key.path;
      EXPECT_LE(std::stoll(key.defaultText), key.maximum) << key.path;
    }
    if (key.type == ConfigType::Choice) {
      const std::string words = std::string("|") + key.choices + "|";
      EXPECT_NE(words.find(std::string("|") + key.defaultText + "|"), std::string::npos)
          << key.path;
    }
  }
}

TEST(Configuration, SilentFileGivesEveryDefault) {
  const auto configuration = parsed("{}");
  expectDefaults(*configuration);
  EXPECT_TRUE(configuration->items().isObject());
  EXPECT_TRUE(configuration->items().empty());
  EXPECT_TRUE(configuration->services().empty());
}

TEST(Configuration, GivenValuesReplaceDefaults) {
  const auto configuration = parsed(R"({
    "onInitFailure": "stop",
    "text": {"language": "zh_CN"},
    "log": {"level": 9, "stderr": false},
    "rest": {"maxAnswerBytes": 4294967296, "tls": {"verify": false}},
    "items": {"IsReportSubnet": 1, "name": "中国"},
    "bundles": [
      {"bundle": "b", "service": "s", "library": "libs.so", "factory": "make"},
      {"bundle": "b", "service": "t", "library": "libt.so", "factory": "make_t"}
    ]})");
  EXPECT_EQ(configuration->text("onInitFailure"), "stop");
  EXPECT_EQ(configuration->text("text.language"), "zh_CN");
  EXPECT_EQ(configuration->integer("log.level"), 9);
  EXPECT_FALSE(configuration->boolean("log.stderr"));
  EXPECT_EQ(configuration->integer("rest.maxAnswerBytes"), 4294967296);
  EXPECT_FALSE(configuration->boolean("rest.tls.verify"));
  EXPECT_EQ(configuration->integer("rest.maxPages"), 1000000);
  EXPECT_EQ(configuration->items()["IsReportSubnet"].asInt(), 1);
  EXPECT_EQ(configuration->items()["name"].asString(), "中国");
  ASSERT_EQ(configuration->services().size(), 2u);
  const ConfiguredService& second = configuration->services()[1];
  EXPECT_EQ(second.bundle + " " + second.service + " " + second.library + " " + second.factory,
            "b t libt.so make_t");
}

TEST(Configuration, IntegersReachBothEndsOfTheirRange) {
  for (const ConfigKey& key : configurationKeys()) {
    if (key.type != ConfigType::Integer) continue;
    for (const auto value : {key.minimum, key.maximum}) {
      std::string text = std::to_string(value);
      std::string path = key.path;
      for (auto dot = path.rfind('.'); !path.empty(); dot = path.rfind('.')) {
        text = "{\"" + path.substr(dot + 1) + "\": " + text + "}";
        path.resize(dot == std::string::npos ? 0 : dot);
      }
      EXPECT_EQ(parsed(text)->integer(key.path), value) << text;
    }
  }
}

TEST(Configuration, PathsAreRelativeToTheFile) {
  const auto configuration = parsed(
      R"({"log": {"file": "log/agent.log"}, "installation": {"root": "/opt/orma", "environment": ""}})");
  EXPECT_EQ(configuration->path("log.file"), "/conf/log/agent.log");
  EXPECT_EQ(configuration->path("installation.root"), "/opt/orma");
  EXPECT_EQ(configuration->path("installation.environment"), "");
  EXPECT_EQ(configuration->absolutePath("inventory.db"), "/conf/inventory.db");
  EXPECT_EQ(configuration->absolutePath("/var/inventory.db"), "/var/inventory.db");
  EXPECT_EQ(configuration->absolutePath(""), "");
}

TEST(Configuration, AskingForAnUnknownPathIsAProgrammingError) {
  try {
    parsed("{}")->text("rest.port");
    FAIL() << "no exception";
  } catch (const std::logic_error& error) {
    EXPECT_STREQ(error.what(), "there is no configuration key rest.port");
  }
}

TEST(Configuration, AskingByTheWrongTypeIsAProgrammingError) {
  const auto configuration = parsed("{}");
  EXPECT_THROW(configuration->integer("rest.baseUrl"), std::logic_error);
  EXPECT_THROW(configuration->text("log.file"), std::logic_error);
  EXPECT_THROW(configuration->path("rest.baseUrl"), std::logic_error);
  try {
    configuration->boolean("log.level");
    FAIL() << "no exception";
  } catch (const std::logic_error& error) {
    EXPECT_STREQ(error.what(), "the configuration key log.level is no boolean");
  }
}

TEST(Configuration, SyntaxErrorsNameTheirPlace) {
  EXPECT_THAT(problemsOf("{\n  \"log\": {\"level\": tru}\n}"),
              ElementsAre("agent.json:2:20 | Syntax error: value, object or array expected."));
  EXPECT_THAT(problemsOf("{\"log\": {},}"),
              ElementsAre("agent.json:1:12 | Missing '}' or object member name"));
  EXPECT_THAT(problemsOf("{\"log\": {}} x"),
              ElementsAre("agent.json:1:13 | Extra non-whitespace after JSON value."));
  EXPECT_THAT(problemsOf("{\"items\": {\"a\": 1, \"a\": 2}}"),
              ElementsAre("agent.json:1:20 | Duplicate key: 'a'"));
  EXPECT_THAT(problemsOf("{\"items\": {\"a\": \"\\q\"}}"),
              ElementsAre("agent.json:1:17 | Bad escape sequence in string"));
}

TEST(Configuration, CommentsAreNotAllowed) {
  EXPECT_THAT(problemsOf("{\n  // the log\n  \"log\": {}\n}"),
              ElementsAre("agent.json:2:3 | comments are not allowed"));
  EXPECT_THAT(problemsOf("{\"log\": /* none */ {}}"),
              ElementsAre("agent.json:1:9 | comments are not allowed"));
  EXPECT_THAT(problemsOf("{\"items\": {\"a\": \"http://x /* y */\"}}"), ElementsAre());
}

TEST(Configuration, EmptyTextIsNoConfiguration) {
  EXPECT_THAT(problemsOf(""),
              ElementsAre("agent.json:1:1 | Syntax error: value, object or array expected.",
                          "agent.json:1:1 | A valid JSON document must be either an array or an "
                          "object value."));
}

TEST(Configuration, LooseNumbersAreRefused) {
  for (const char* number : {"01", "-", "+1", "1.", "1e", "1.e5", "-01", "1e+", "1--2", "1.2.3"}) {
    EXPECT_THAT(
        problemsOf(std::string("{\"items\": {\n\"a\": ") + number + "}}"),
        ElementsAre(std::string("agent.json:2:6 | \"") + number + "\" is not a JSON number"));
  }
}

TEST(Configuration, StrictNumbersAreTaken) {
  EXPECT_EQ(parsed("{\"log\": {\"level\": 0}}")->integer("log.level"), 0);
  for (const char* number : {"-0", "-10", "9223372036854775807", "-9223372036854775808"}) {
    EXPECT_THAT(problemsOf(std::string("{\"items\": {\"a\": ") + number + "}}"), ElementsAre());
  }
}

TEST(Configuration, TextsAreUtf8WithoutRawControlCharacters) {
  EXPECT_THAT(problemsOf("{\"items\": {\"a\": \"x\ny\"}}"),
              ElementsAre("agent.json:1:19 | a control character in a text must be escaped (line "
                          "feed as \\n, tab as \\t)"));
  EXPECT_THAT(problemsOf("{\"items\": {\"a\": \"\xE4\xB8\"}}"),
              ElementsAre("agent.json:1:18 | a text must be valid UTF-8"));
  EXPECT_EQ(parsed(R"({"items": {"a": "\\\"\u4e2d\n\\"}})")->items()["a"].asString(), "\\\"中\n\\");
}

TEST(Configuration, NestingIsBounded) {
  const std::string deep(100000, '[');
  EXPECT_THAT(problemsOf("{\"items\":\n" + deep),
              ElementsAre("agent.json:2:32 | nested deeper than 32 levels"));
  const std::string brackets = std::string(31, '[') + std::string(31, ']');
  EXPECT_THAT(problemsOf("{\"items\": " + brackets + "}"),
              ElementsAre("agent.json: items | must be an object of integers and texts"));
}

TEST(Configuration, TheDocumentIsAnObject) {
  EXPECT_THAT(problemsOf("[1]"), ElementsAre("agent.json | the file must hold one JSON object"));
}

TEST(Configuration, UnknownKeysNameTheKnownOnes) {
  EXPECT_THAT(problemsOf(R"({"rest": {"tls": {"verifi": true}}})"),
              ElementsAre("agent.json: rest.tls.verifi | unknown key; known here: verify, caFile, "
                          "certFile, keyFile"));
  EXPECT_THAT(problemsOf(R"({"lgo": {}})"),
              ElementsAre("agent.json: lgo | unknown key; known here: onInitFailure, "
                          "installation, text, log, rest, faultServer, database, serve, bundles, "
                          "items"));
}

TEST(Configuration, DotsInAKeyAreNoPath) {
  EXPECT_THAT(problemsOf(R"({"log.level": 3})"),
              ElementsAre("agent.json: \"log.level\" | unknown key; known here: onInitFailure, "
                          "installation, text, log, rest, faultServer, database, serve, bundles, "
                          "items"));
  EXPECT_THAT(problemsOf(R"({"rest": {"tls.verify": false}})"),
              ElementsAre("agent.json: rest.\"tls.verify\" | unknown key; known here: baseUrl, "
                          "target, connectTimeoutMs, totalTimeoutMs, maxAnswerBytes, maxNesting, "
                          "maxConnections, devicePageSize, maxPages, tls, token"));
}

TEST(Configuration, HostileKeysAreShownEscaped) {
  EXPECT_THAT(problemsOf("{\"log\": {\"a\\n\\u001b[2J\": 1}}"),
              ElementsAre("agent.json: log.\"a\\n\\u001b[2J\" | unknown key; known here: level, "
                          "format, file, maxFileBytes, maxFiles, stderr, syslog"));
}

TEST(Configuration, WrongTypesSayWhatIsWanted) {
  EXPECT_THAT(
      problemsOf(R"({"database": {"connection": 5, "busyTimeoutMs": true},
                     "log": {"level": "3", "format": 1, "file": null, "stderr": "yes"},
                     "rest": 7, "items": [], "bundles": {}})"),
      ElementsAre("agent.json: bundles | must be an array of services",
                  "agent.json: database.busyTimeoutMs | must be an integer from 0 to 600000",
                  "agent.json: database.connection | must be a text without NUL characters",
                  "agent.json: items | must be an object of integers and texts",
                  "agent.json: log.file | must be a text without NUL characters",
                  "agent.json: log.format | must be one of: text, json",
                  "agent.json: log.level | must be an integer from 0 to 9",
                  "agent.json: log.stderr | must be true or false",
                  "agent.json: rest | must be an object"));
}

TEST(Configuration, NumbersOutOfRangeAreShown) {
  EXPECT_THAT(
      problemsOf(R"({"log": {"level": -1, "maxFiles": 101, "maxFileBytes": 4096.5},
                     "rest": {"maxPages": 99999999999999999999, "maxNesting": 10.0,
                              "maxAnswerBytes": 18446744073709551615}})"),
      ElementsAre(
          "agent.json: log.level | must be an integer from 0 to 9, not -1",
          "agent.json: log.maxFileBytes | must be an integer from 4096 to 1073741824, not 4096.5",
          "agent.json: log.maxFiles | must be an integer from 1 to 100, not 101",
          "agent.json: rest.maxAnswerBytes | must be an integer from 1024 to 4294967296, not "
          "18446744073709551615",
          "agent.json: rest.maxNesting | must be an integer from 1 to 1000, not 10.0",
          "agent.json: rest.maxPages | must be an integer from 1 to 1000000000, not 1e+20"));
}

TEST(Configuration, WrongChoicesNameTheRightOnes) {
  EXPECT_THAT(problemsOf(R"({"onInitFailure": "halt"})"),
              ElementsAre("agent.json: onInitFailure | must be one of: continue, stop"));
}

TEST(Configuration, TextsHoldNoNul) {
  EXPECT_THAT(problemsOf(R"({"log": {"file": "a\u0000b"}, "items": {"x": "\u0000"}})"),
              ElementsAre("agent.json: items.x | must be an integer or a text",
                          "agent.json: log.file | must be a text without NUL characters"));
}

TEST(Configuration, ItemsAreIntegersAndTexts) {
  EXPECT_THAT(
      problemsOf(R"({"items": {"a": 1.5, "b": {}, "c": null, "d": true, "e": "", "f": 0}})"),
      ElementsAre("agent.json: items.a | must be an integer or a text",
                  "agent.json: items.b | must be an integer or a text",
                  "agent.json: items.c | must be an integer or a text",
                  "agent.json: items.d | must be an integer or a text"));
}

TEST(Configuration, ServicesNeedEachOfTheirMembers) {
  EXPECT_THAT(
      problemsOf(
          R"({"bundles": ["x", {"bundle": "b", "library": "", "factory": 1, "name": "n"}]})"),
      ElementsAre("agent.json: bundles[0] | must be an object with bundle, service, library, "
                  "factory",
                  "agent.json: bundles[1].service | is missing",
                  "agent.json: bundles[1].library | must be a text that is not empty",
                  "agent.json: bundles[1].factory | must be a text that is not empty",
                  "agent.json: bundles[1].name | unknown key; known here: bundle, service, "
                  "library, factory"));
}

TEST(Configuration, OneServiceIsConfiguredOnce) {
  const std::string one = R"({"bundle": "b", "service": "s", "library": "l", "factory": "f"})";
  const std::string other = R"({"bundle": "c", "service": "s", "library": "l", "factory": "f"})";
  EXPECT_THAT(problemsOf("{\"bundles\": [" + one + "," + other + "," + one + "]}"),
              ElementsAre("agent.json: bundles[2] | the service s of the bundle b is configured "
                          "twice"));
}

TEST(Configuration, ProblemsJoinThoseBefore) {
  std::vector<ConfigProblem> problems = {{"before", "trouble"}};
  EXPECT_NE(Configuration::parse("{}", "agent.json", "/conf", problems), nullptr);
  EXPECT_EQ(Configuration::parse("[]", "agent.json", "/conf", problems), nullptr);
  EXPECT_THAT(asLines(problems),
              ElementsAre("before | trouble", "agent.json | the file must hold one JSON object"));
}

TEST(InstalledConfiguration, IsTheDefaultsBeforeAnyIsInstalled) {
  Configuration::install(nullptr);
  ASSERT_NE(Configuration::current(), nullptr);
  expectDefaults(*Configuration::current());
}

TEST(InstalledConfiguration, StaysWithWhomeverHoldsIt) {
  Configuration::install(parsed(R"({"log": {"level": 3}})"));
  const auto held = Configuration::current();
  Configuration::install(parsed(R"({"log": {"level": 2}})"));
  EXPECT_EQ(held->integer("log.level"), 3);
  EXPECT_EQ(Configuration::current()->integer("log.level"), 2);
  Configuration::install(nullptr);
}

TEST(InstalledConfiguration, IsReplacedWholeUnderReaders) {
  const auto low = parsed(R"({"log": {"level": 2, "maxFiles": 2}})");
  const auto high = parsed(R"({"log": {"level": 7, "maxFiles": 7}})");
  Configuration::install(low);
  std::atomic<bool> done{false};
  std::atomic<int> torn{0};
  std::vector<std::thread> readers;
  for (int i = 0; i < 4; ++i) {
    readers.emplace_back([&] {
      while (!done) {
        const auto seen = Configuration::current();
        if (seen->integer("log.level") != seen->integer("log.maxFiles")) ++torn;
      }
    });
  }
  for (int i = 0; i < 2000; ++i) Configuration::install(i % 2 == 0 ? high : low);
  done = true;
  for (std::thread& reader : readers) reader.join();
  EXPECT_EQ(torn, 0);
  Configuration::install(nullptr);
}

}  // namespace
}  // namespace orma
