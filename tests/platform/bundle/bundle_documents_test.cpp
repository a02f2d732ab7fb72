// Holds docs/configuration.md to the key table.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "config_problems.h"

namespace orma {
namespace {

std::vector<std::string> pageLines() {
  std::ifstream page(CONFIGURATION_PAGE);
  std::vector<std::string> lines;
  for (std::string line; std::getline(page, line);) lines.push_back(line);
  return lines;
}

std::string inBackticks(const std::string& word) { return "`" + word + "`"; }

const char* typeName(ConfigType type) {
  switch (type) {
    case ConfigType::Text:
      return "text";
    case ConfigType::Path:
      return "path";
    case ConfigType::Integer:
      return "integer";
    case ConfigType::Boolean:
      return "boolean";
    case ConfigType::Choice:
      return "choice";
  }
  return "";
}

std::string rangeOf(const ConfigKey& key) {
  if (key.type == ConfigType::Integer) {
    return std::to_string(key.minimum) + " to " + std::to_string(key.maximum);
  }
  std::string words;
  std::istringstream choices(key.choices);
  for (std::string word; std::getline(choices, word, '|');) {
    words += (words.empty() ? "" : ", ") + inBackticks(word);
  }
  return words;
}

std::string rowOf(const ConfigKey& key) {
  const std::string givenDefault = key.defaultText;
  std::string row = "|";
  for (const std::string& cell :
       {inBackticks(key.path), std::string(typeName(key.type)),
        givenDefault.empty() ? std::string("empty") : inBackticks(givenDefault), rangeOf(key),
        std::string(key.meaning)}) {
    row += cell.empty() ? " |" : " " + cell + " |";
  }
  return row;
}

TEST(ConfigurationPage, HasOneRowForEachKeyInTheOrderOfTheTable) {
  std::vector<std::string> expected;
  for (const ConfigKey& key : configurationKeys()) expected.push_back(rowOf(key));
  std::vector<std::string> rows;
  for (const std::string& line : pageLines()) {
    if (line.rfind("| `", 0) == 0) rows.push_back(line);
  }
  EXPECT_EQ(rows, expected);
}

TEST(ConfigurationPage, ExamplesAreConfigurationsWithoutProblems) {
  int examples = 0;
  std::string example;
  bool inside = false;
  for (const std::string& line : pageLines()) {
    if (inside && line == "```") {
      EXPECT_THAT(problemsOf(example), testing::ElementsAre()) << example;
      ++examples;
      inside = false;
    } else if (line == "```json") {
      example.clear();
      inside = true;
    } else if (inside) {
      example += line + "\n";
    }
  }
  EXPECT_GE(examples, 2);
}

}  // namespace
}  // namespace orma
