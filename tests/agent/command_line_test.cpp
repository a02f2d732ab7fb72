#include "command_line.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <iomanip>
#include <sstream>
#include <string>
#include <vector>

namespace ormaagent {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

ParsedCommandLine parse(std::vector<const char*> words) {
  words.insert(words.begin(), "ormaagent");
  return parseCommandLine(static_cast<int>(words.size()), words.data());
}

Invocation invocation(const std::vector<const char*>& words) {
  const ParsedCommandLine parsed = parse(words);
  if (const auto* finished = std::get_if<Finished>(&parsed)) {
    ADD_FAILURE() << finished->message;
    return {};
  }
  return std::get<Invocation>(parsed);
}

Finished finished(const std::vector<const char*>& words) {
  const ParsedCommandLine parsed = parse(words);
  if (const auto* found = std::get_if<Finished>(&parsed)) return *found;
  ADD_FAILURE() << "the command line was taken";
  return {};
}

// Wrong usage: status 2, nothing for standard output, and a message that holds `words`.
void expectUsage(const std::vector<const char*>& line, const std::string& words) {
  const Finished result = finished(line);
  EXPECT_EQ(result.status, 2);
  EXPECT_THAT(result.answer, IsEmpty());
  EXPECT_THAT(result.message, HasSubstr(words));
}

class CommandLine : public testing::Test {
 protected:
  CommandLine() { ::unsetenv("ORMAAGENT_CONFIG"); }
  ~CommandLine() override { ::unsetenv("ORMAAGENT_CONFIG"); }
};

TEST_F(CommandLine, GroupAndWordFindTheirRow) {
  const Invocation found = invocation({"topo", "device", "12"});
  EXPECT_EQ(found.action, Action::kQuery);
  ASSERT_NE(found.command, nullptr);
  EXPECT_STREQ(found.command->path, "topo device");
  EXPECT_EQ(found.arguments.text(0), "12");
  EXPECT_EQ(found.format, Format::kTable);
  EXPECT_EQ(found.logLevel, std::nullopt);
}

TEST_F(CommandLine, TheTimeoutIsTheCommandsOwnUnlessGiven) {
  EXPECT_EQ(invocation({"serve"}).timeout, std::nullopt);
  EXPECT_EQ(invocation({"serve", "--timeout", "86400"}).timeout, std::chrono::seconds(86400));
  EXPECT_EQ(invocation({"--timeout=1", "topo", "devices"}).timeout, std::chrono::seconds(1));
}

TEST_F(CommandLine, ServeMayCheckTheConfigurationAlone) {
  EXPECT_EQ(invocation({"serve"}).action, Action::kServe);
  EXPECT_EQ(invocation({"serve", "--check"}).action, Action::kCheckConfiguration);
}

TEST_F(CommandLine, EveryRowIsReachedByItsExample) {
  for (const Command& command : commands()) {
    std::istringstream text(std::string(command.path) + " " + command.example);
    std::vector<std::string> words;
    for (std::string word; text >> std::quoted(word, '\'');) words.push_back(word);
    std::vector<const char*> pointers;
    for (const std::string& word : words) pointers.push_back(word.c_str());
    EXPECT_STREQ(invocation(pointers).command->path, command.path);
  }
}

TEST_F(CommandLine, RepeatedOptionKeepsItsValuesInOrder) {
  const Arguments none = invocation({"db", "query", "SELECT 1"}).arguments;
  EXPECT_THAT(none.repeatedOption("--param"), IsEmpty());
  const Arguments given =
      invocation({"db", "query", "--param", "b", "SELECT :a, :b, :c", "--param", "a", "--param=-1"})
          .arguments;
  EXPECT_EQ(given.text(0), "SELECT :a, :b, :c");
  EXPECT_THAT(given.repeatedOption("--param"), testing::ElementsAre("b", "a", "-1"));
}

TEST_F(CommandLine, RepeatedOptionChecksEachValue) {
  expectUsage({"db", "query", "SELECT :a", "--param", "a", "--param", "integer:x"},
              "must be a text that is not empty, or integer:N, real:N, text:T, bytes:HEX or null:");
  expectUsage({"db", "query", "SELECT :a", "--param", ""}, "must be a text that is not empty");
  expectUsage({"db", "query", "SELECT :a", "--param"}, "--param");
}

TEST_F(CommandLine, AnOptionalArgumentMayBeLeftOut) {
  EXPECT_EQ(invocation({"topo", "nodes"}).arguments.count(), 0u);
  const Arguments given = invocation({"topo", "nodes", "S1000"}).arguments;
  ASSERT_EQ(given.count(), 1u);
  EXPECT_EQ(given.text(0), "S1000");
  expectUsage({"topo", "nodes", "S1000", "S1001"}, "S1001");
}

TEST_F(CommandLine, TheLastParameterMayTakeEveryWord) {
  const Arguments given = invocation({"topo", "submap-name", "12", "13", "14"}).arguments;
  ASSERT_EQ(given.count(), 3u);
  EXPECT_EQ(given.text(0), "12");
  EXPECT_EQ(given.text(2), "14");
  expectUsage({"topo", "submap-name"}, "DEVICE is required");
  expectUsage({"topo", "submap-name", "12", "-1"}, "from 0 to 18446744073709551615");
}

TEST_F(CommandLine, TheLastParameterMayTakeAnyNumberOfWords) {
  EXPECT_EQ(invocation({"res", "labels"}).arguments.count(), 0u);
  const Arguments given =
      invocation({"res", "labels", "NE=2", "--from", "-", "NE=3", "--from", "a"}).arguments;
  EXPECT_THAT(given.texts(), testing::ElementsAre("NE=2", "NE=3"));
  EXPECT_THAT(given.repeatedOption("--from"), testing::ElementsAre("-", "a"));
  expectUsage({"res", "labels", ""}, "DN: must be a text that is not empty");
  expectUsage({"res", "labels", "--from", ""}, "--from: must be a text that is not empty");
}

TEST_F(CommandLine, TheContentsOfAnElementNeedAMainType) {
  const Arguments given = invocation({"res", "contained", "2", "-3", "--main-type", "6",
                                      "--sub-type", "-1", "--sub-type", "7"})
                              .arguments;
  EXPECT_THAT(given.texts(), testing::ElementsAre("2", "-3"));
  EXPECT_EQ(given.numberOption<int>("--main-type"), 6);
  EXPECT_THAT(given.repeatedOption("--sub-type"), testing::ElementsAre("-1", "7"));
  expectUsage({"res", "contained", "2"}, "--main-type is required");
  expectUsage({"res", "contained", "--main-type", "6"}, "ID is required");
  expectUsage({"res", "contained", "x", "--main-type", "6"}, "ID: must be a whole number");
  expectUsage({"res", "contained", "12", "1\n3", "14", "--main-type", "6"}, "7, not \"1\\x0A3\"\n");
  const std::string longest(60, 'x');
  expectUsage({"res", "tree", (longest + "x").c_str()}, "7, not \"" + longest + "…\"\n");
  expectUsage({"res", "contained", "2", "--main-type", "6", "--sub-type", "x"},
              "--sub-type: must be a whole number");
}

TEST_F(CommandLine, OptionsOfACommandHaveDefaults) {
  EXPECT_EQ(invocation({"topo", "tree"}).arguments.option("--wait"), "5");
  for (const auto& words :
       std::vector<std::vector<const char*>>{{"topo", "submap-name", "--wait", "60", "12", "13"},
                                             {"topo", "submap-name", "12", "13", "--wait=60"}}) {
    const Arguments given = invocation(words).arguments;
    EXPECT_EQ(given.count(), 2u);
    EXPECT_EQ(given.numberOption<int>("--wait"), 60);
  }
  expectUsage({"topo", "tree", "--wait", "86401"}, "--wait: must be a whole number of seconds");
  expectUsage({"topo", "tree", "--wait", "-1"}, "--wait: must be a whole number of seconds");
  expectUsage({"topo", "tree", "--wait", ""}, "--wait: must be a whole number of seconds");
  expectUsage({"topo", "links", "--wait", "1"}, "--wait");
}

TEST_F(CommandLine, APictureNeedsAFileOfAKnownKind) {
  EXPECT_EQ(invocation({"topo", "draw", "--out", "a.dot"}).arguments.option("--out"), "a.dot");
  expectUsage({"topo", "draw"}, "--out is required");
  expectUsage({"topo", "draw", "--out", "a.png"}, "--out: must be a file name that ends in .svg");
  expectUsage({"topo", "draw", "--out", ".svg"}, "--out: must be a file name that ends in .svg");
}

TEST_F(CommandLine, AnEmptySubMapKeyIsRefused) {
  expectUsage({"topo", "submap", ""}, "KEY: must be a text that is not empty");
}

TEST_F(CommandLine, GlobalOptionsStandAnywhere) {
  for (const auto& words : std::vector<std::vector<const char*>>{
           {"--format", "json", "--config", "a.json", "--log-level", "3", "topo", "devices"},
           {"topo", "--config=a.json", "devices", "--format=json", "--log-level=3"}}) {
    const Invocation found = invocation(words);
    EXPECT_EQ(found.format, Format::kJson);
    EXPECT_EQ(found.configFile, "a.json");
    EXPECT_EQ(found.logLevel, 3);
  }
}

TEST_F(CommandLine, TheConfigurationComesFromOptionEnvironmentOrHere) {
  EXPECT_EQ(invocation({"serve"}).configFile, "./ormaagent.json");
  ::setenv("ORMAAGENT_CONFIG", "/etc/agent.json", 1);
  EXPECT_EQ(invocation({"serve"}).configFile, "/etc/agent.json");
  EXPECT_EQ(invocation({"--config", "mine.json", "serve"}).configFile, "mine.json");
  ::setenv("ORMAAGENT_CONFIG", "", 1);
  EXPECT_EQ(invocation({"serve"}).configFile, "./ormaagent.json");
}

TEST_F(CommandLine, HostCommandsHaveNoRow) {
  EXPECT_EQ(invocation({"serve"}).action, Action::kServe);
  EXPECT_EQ(invocation({"config", "check"}).action, Action::kCheckConfiguration);
}

TEST_F(CommandLine, ANegativeNumberIsAnArgument) {
  EXPECT_EQ(invocation({"topo", "device", "-12"}).arguments.text(0), "-12");
  EXPECT_EQ(invocation({"cache", "name", "--", "-core"}).arguments.text(0), "-core");
}

TEST_F(CommandLine, WrongUsageSaysWhatWouldBeRight) {
  expectUsage({}, "subcommand is required");
  expectUsage({"topo"}, "subcommand is required");
  expectUsage({"nothing"}, "not known: nothing");
  expectUsage({"topo", "nothing", "12"}, "not known: nothing 12");
  expectUsage({"topo", "device"}, "ID is required");
  expectUsage({"topo", "device", "12", "13"}, "13");
  expectUsage({"topo", "device", "twelve"}, "ID: must be a whole number from -9223372036854775808");
  expectUsage({"topo", "version", "2147483648"}, "to 2147483647");
  expectUsage({"res", "fdn", "-1"}, "from 0 to 4294967295");
  expectUsage({"error-text", "0xZ"}, "hexadecimal");
  expectUsage({"--format", "xml", "serve"}, "--format: must be table, json or csv");
  expectUsage({"--log-level", "10", "serve"}, "--log-level");
  for (const char* seconds : {"0", "86401", "-1", "1.5", ""}) {
    expectUsage({"--timeout", seconds, "serve"}, "--timeout");
  }
  expectUsage({"--config"}, "--config");
}

TEST_F(CommandLine, HelpGoesToStandardOutputWithExamples) {
  const Finished help = finished({"--help"});
  EXPECT_EQ(help.status, 0);
  EXPECT_THAT(help.message, IsEmpty());
  EXPECT_THAT(help.answer, HasSubstr("ormaagent --config agent.json topo devices"));
  for (const char* word : {"topo", "cache", "res", "error-text", "serve", "config"}) {
    EXPECT_THAT(help.answer, HasSubstr(std::string("\n  ") + word + " "));
  }
}

TEST_F(CommandLine, EachCommandHelpsWithItsArgumentsAndAnExample) {
  const Finished help = finished({"topo", "device", "--help"});
  EXPECT_EQ(help.status, 0);
  EXPECT_THAT(help.answer, HasSubstr("One device from the database"));
  EXPECT_THAT(help.answer, HasSubstr("device id, cut to 32 bits"));
  EXPECT_THAT(help.answer, HasSubstr("Example: ormaagent topo device 12"));
}

TEST_F(CommandLine, VersionIsOneLine) {
  const Finished version = finished({"--version"});
  EXPECT_EQ(version.status, 0);
  EXPECT_THAT(version.answer, StartsWith("ormaagent 1."));
  EXPECT_EQ(version.answer.find('\n'), version.answer.size() - 1);
}

}  // namespace
}  // namespace ormaagent
