#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "sample.h"

namespace usagetest {
namespace {

struct Parsed {
  int status = -1;
  std::string out;
  std::string err;
};

Parsed parse(CLI::App& app, std::vector<const char*> words) {
  words.insert(words.begin(), "mover");
  try {
    app.parse(static_cast<int>(words.size()), words.data());
  } catch (const CLI::ParseError& stop) {
    std::ostringstream out;
    std::ostringstream err;
    const int status = app.exit(stop, out, err);
    return {status, out.str(), err.str()};
  }
  return {};
}

TEST(HelpFooter, HoldsExamplesStatusAndHints) {
  const Sample sample;
  EXPECT_EQ(usage::helpFooter(sample.manual),
            "Examples:\n  mover box lift 7\n\nExit status: 0 moved, 1 dropped.\nMind your back.");
}

TEST(HelpFooter, BreaksLinesAtEightyColumns) {
  usage::Manual manual;
  manual.exitStatus = {{"0", std::string(66, 'a') + " b"}, {"1", "c"}};
  EXPECT_EQ(usage::helpFooter(manual),
            "Examples:\n\nExit status: 0\n" + std::string(66, 'a') + " b, 1 c.");
}

class Generator : public testing::Test {
 protected:
  Generator() {
    usage::addGenerator(sample_.app, {{"man", [] { return std::string("page\n"); }}});
  }
  Sample sample_;
};

TEST_F(Generator, EndsTheParseWithItsText) {
  const Parsed parsed = parse(sample_.app, {"--generate", "man"});
  EXPECT_EQ(parsed.status, 0);
  EXPECT_EQ(parsed.out, "page\n");
  EXPECT_EQ(parsed.err, "");
}

TEST_F(Generator, AnUnknownWordIsAnError) {
  const Parsed parsed = parse(sample_.app, {"--generate", "woman"});
  EXPECT_NE(parsed.status, 0);
  EXPECT_EQ(parsed.out, "");
  EXPECT_THAT(parsed.err, testing::HasSubstr("--generate: there is no woman"));
}

TEST_F(Generator, DoesNotShowInTheHelp) {
  const Parsed parsed = parse(sample_.app, {"--help"});
  EXPECT_EQ(parsed.status, 0);
  EXPECT_THAT(parsed.out, testing::Not(testing::HasSubstr("generate")));
}

}  // namespace
}  // namespace usagetest
