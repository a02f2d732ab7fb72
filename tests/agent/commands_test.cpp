#include "command.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>

namespace ormaagent {
namespace {

TEST(Commands, EveryRowIsWhole) {
  std::set<std::string> paths;
  for (const Command& command : commands()) {
    SCOPED_TRACE(command.path);
    EXPECT_TRUE(paths.insert(command.path).second);
    EXPECT_STRNE(command.help, "");
    EXPECT_NE(command.operation, nullptr);
    for (const Parameter& parameter : command.parameters) {
      if (parameter.name == nullptr) break;
      EXPECT_STRNE(parameter.help, "");
      EXPECT_STRNE(describe(parameter.type), "");
    }
    for (const Option& option : command.options) {
      if (option.name == nullptr) break;
      EXPECT_STRNE(option.help, "");
      EXPECT_STRNE(option.value, "");
      EXPECT_FALSE(accepts(option.type, "")) << "an empty text stands for an absent option";
      EXPECT_TRUE(!option.repeated || option.defaultValue == nullptr);
      if (option.defaultValue != nullptr) {
        EXPECT_TRUE(accepts(option.type, option.defaultValue));
      }
    }
  }
}

// What makes the words of a command line unambiguous.
TEST(Commands, OptionalAndRepeatedParametersStandLast) {
  for (const Command& command : commands()) {
    SCOPED_TRACE(command.path);
    bool mayEnd = false;
    for (const Parameter& parameter : command.parameters) {
      if (parameter.name == nullptr) break;
      EXPECT_FALSE(mayEnd);
      mayEnd = parameter.presence != Presence::kRequired;
    }
  }
}

TEST(Commands, EveryGroupHasARow) {
  for (const Command& command : commands()) {
    const std::string path = command.path;
    const auto blank = path.find(' ');
    if (blank == std::string::npos) continue;
    const auto& groups = commandGroups();
    EXPECT_TRUE(std::any_of(groups.begin(), groups.end(), [&](const CommandGroup& group) {
      return path.substr(0, blank) == group.name;
    })) << path;
  }
}

TEST(Commands, ResultsAreJudgedByTheirRule) {
  EXPECT_TRUE(succeeded(ResultRule::kZeroSucceeds, 0));
  EXPECT_FALSE(succeeded(ResultRule::kZeroSucceeds, 1));
  EXPECT_FALSE(succeeded(ResultRule::kZeroSucceeds, -1));
  EXPECT_TRUE(succeeded(ResultRule::kOneIsFound, 1));
  EXPECT_FALSE(succeeded(ResultRule::kOneIsFound, 0));
  EXPECT_TRUE(succeeded(ResultRule::kNegativeFails, 5));
  EXPECT_TRUE(succeeded(ResultRule::kNegativeFails, 0));
  EXPECT_FALSE(succeeded(ResultRule::kNegativeFails, -1));
}

}  // namespace
}  // namespace ormaagent
