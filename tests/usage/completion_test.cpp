// The completion as bash runs it: the words of a line go in, the proposals come out.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "sample.h"

namespace usagetest {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Words = std::vector<std::string>;

class Completion : public testing::Test {
 protected:
  Completion() {
    std::string pattern = testing::TempDir() + "completion.XXXXXX";
    directory_ = ::mkdtemp(pattern.data());
    std::ofstream(directory_ + "/script") << usage::bashCompletion(sample_.app, sample_.manual);
    std::ofstream(directory_ + "/atlas 1");
    std::ofstream(directory_ + "/atlas2");
  }
  ~Completion() override { std::filesystem::remove_all(directory_); }

  // What is proposed for the last of the words.
  Words propose(const Words& words) const {
    std::string array;
    for (const std::string& word : words) array += " '" + word + "'";
    const std::string script = "cd " + directory_ + " && source ./script && COMP_WORDS=(mover" +
                               array + ") COMP_CWORD=" + std::to_string(words.size()) +
                               " && _mover && for word in \"${COMPREPLY[@]}\"; do echo \"$word\"; "
                               "done";
    std::ofstream(directory_ + "/run") << "set -u\n" << script << "\n";
    return linesOf("bash " + directory_ + "/run 2>&1");
  }

 private:
  static Words linesOf(const std::string& command) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> pipe(::popen(command.c_str(), "r"),
                                                               ::pclose);
    Words lines;
    char line[4096];
    while (pipe != nullptr && std::fgets(line, sizeof line, pipe.get()) != nullptr) {
      lines.emplace_back(line, std::string(line).find_last_not_of('\n') + 1);
    }
    return lines;
  }

  Sample sample_;
  std::string directory_;
};

TEST_F(Completion, ProposesCommandsAndTheirWords) {
  EXPECT_THAT(propose({""}), ElementsAre("box", "rest"));
  EXPECT_THAT(propose({"b"}), ElementsAre("box"));
  EXPECT_THAT(propose({"box", ""}), ElementsAre("lift", "pack"));
  EXPECT_THAT(propose({"box", "lift", ""}), IsEmpty());
  EXPECT_THAT(propose({"rest", ""}), IsEmpty());
}

TEST_F(Completion, ProposesOptionsOfTheCommandAndThoseItInherits) {
  EXPECT_THAT(propose({"-"}), ElementsAre("--help", "--map", "--quiet", "--speed", "-h", "-q"));
  EXPECT_THAT(propose({"box", "lift", "--"}),
              ElementsAre("--height", "--help", "--map", "--quiet", "--speed"));
  EXPECT_THAT(propose({"rest", "--"}), ElementsAre("--help"));
}

TEST_F(Completion, ProposesTheWordsOfAValue) {
  EXPECT_THAT(propose({"--speed", ""}), ElementsAre("fast", "slow"));
  EXPECT_THAT(propose({"--speed", "=", "s"}), ElementsAre("slow"));
  EXPECT_THAT(propose({"--speed", "="}), ElementsAre("fast", "slow"));
  EXPECT_THAT(propose({"box", "lift", "7", "--speed", "f"}), ElementsAre("fast"));
}

TEST_F(Completion, ProposesFilesWithBlanksInTheirNames) {
  EXPECT_THAT(propose({"--map", "at"}), testing::UnorderedElementsAre("atlas 1", "atlas2"));
  EXPECT_THAT(propose({"box", "pack", "--to", "=", "atlas2"}), ElementsAre("atlas2"));
  EXPECT_THAT(propose({"box", "pack", "atlas2", "atlas "}), ElementsAre("atlas 1"));
}

TEST_F(Completion, AValueIsNoCommand) {
  EXPECT_THAT(propose({"--map", "box", ""}), ElementsAre("box", "rest"));
  EXPECT_THAT(propose({"--map", "=", "box", "b"}), ElementsAre("box"));
  EXPECT_THAT(propose({"--height", "1", "-q", "b"}), ElementsAre("box"));
}

TEST_F(Completion, BehindTwoHyphensStandArgumentsOnly) {
  EXPECT_THAT(propose({"box", "--", ""}), IsEmpty());
  EXPECT_THAT(propose({"box", "pack", "--", "atlas "}), ElementsAre("atlas 1"));
}

TEST_F(Completion, AValueOfAnyFormHasNoProposal) {
  EXPECT_THAT(propose({"box", "lift", "--height", ""}), IsEmpty());
}

}  // namespace
}  // namespace usagetest
