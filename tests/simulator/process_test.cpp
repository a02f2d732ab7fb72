#include "process.h"

#include <gmock/gmock.h>

#include <csignal>

#include "graphml_text.h"
#include "support.h"

namespace ormasim::testing {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

class ProgramTest : public ::testing::Test {
 protected:
  Outcome ormasim(const std::vector<std::string>& arguments) {
    return run(ORMASIM_PROGRAM, arguments);
  }

  TempDirectory directory_;
  const std::string database_ = directory_.path("net.db");
};

TEST_F(ProgramTest, HelpHasExamples) {
  const Outcome outcome = ormasim({"--help"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.output, AllOf(HasSubstr("generate"), HasSubstr("import"), HasSubstr("serve"),
                                    HasSubstr("Examples:\n  ormasim generate --elements 200")));
  for (const char* command : {"generate", "import", "serve", "status"}) {
    EXPECT_EQ(ormasim({command, "--help"}).status, 0) << command;
  }
}

TEST_F(ProgramTest, VersionIsAWordAndANumber) {
  const Outcome outcome = ormasim({"--version"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.output, ::testing::MatchesRegex("ormasim [0-9]+\\.[0-9]+\\.[0-9]+\n"));
}

TEST_F(ProgramTest, WrongCommandLinesExitWithTwo) {
  const std::vector<std::string> wrong[] = {
      {},
      {"explode"},
      {"generate"},
      {"generate", "--elements", "5"},
      {"generate", "--elements", "many", "--db", database_},
      {"generate", "--elements", "-1", "--db", database_},
      {"generate", "--elements", "10000001", "--db", database_},
      {"generate", "--elements", "5", "--db", database_, "--speed", "7"},
      {"import", "--db", database_},
      {"serve"},
      {"serve", "--db", database_, "--http-port", "65536"},
      {"serve", "--db", database_, "--http-port", "-1"},
      {"status", "--db", database_},
      {"status", "--port", "1"},
      {"status", "--db", database_, "--port", "1/2"},
      {"status", "--db", database_, "--port", "1", "--states", "1"},
      {"status", "--db", database_, "--port", "1", "--states", "1,x"},
      {"status", "--db", database_, "--port", "1", "--states", ""},
  };
  for (const std::vector<std::string>& arguments : wrong) {
    const Outcome outcome = ormasim(arguments);
    EXPECT_EQ(outcome.status, 2) << ::testing::PrintToString(arguments);
    EXPECT_THAT(outcome.errors, HasSubstr("--help"));
    EXPECT_EQ(outcome.output, "");
  }
  EXPECT_THAT(directory_.entries(), IsEmpty());
}

TEST_F(ProgramTest, GenerateMakesTheDatabaseAndSaysSo) {
  const Outcome outcome = ormasim({"generate", "--elements", "20", "--db", database_});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.output, "");
  // No bar where standard error is no terminal.
  EXPECT_EQ(outcome.errors, "ormasim: 20 elements are in " + database_ + "\n");
  EXPECT_THAT(query(database_, "SELECT count(*) FROM device"), ElementsAre("20"));
}

TEST_F(ProgramTest, GenerateDoesNotOverwriteUnlessForced) {
  directory_.write("net.db", "precious");
  const Outcome outcome = ormasim({"generate", "--elements", "20", "--db", database_});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.errors,
            "ormasim: will not overwrite " + database_ + ": give --force, or another file\n");
  EXPECT_EQ(contentOf(database_), "precious");
  EXPECT_EQ(ormasim({"generate", "--elements", "20", "--db", database_, "--force"}).status, 0);
}

TEST_F(ProgramTest, InterruptedGenerateLeavesNoFile) {
  Process process(ORMASIM_PROGRAM, {"generate", "--elements", "10000000", "--db", database_});
  // The signal counts from the moment on in which the program works on its file.
  while (directory_.entries().empty()) {
  }
  process.signal(SIGTERM);
  EXPECT_EQ(process.wait(), 1);
  EXPECT_EQ(process.errors(), "ormasim: interrupted; nothing was changed\n");
  EXPECT_THAT(directory_.entries(), IsEmpty());
}

TEST_F(ProgramTest, ImportReadsFilesAndSaysWhatItDid) {
  const std::string file =
      directory_.write("a.graphml", graphml(node("0", {}) + node("1", {}) + edge("0", "1")));
  EXPECT_EQ(ormasim({"import", file, "--db", database_}).errors,
            "ormasim: 1 networks with 2 elements and 1 links are in " + database_ + "\n");
  const Outcome again = ormasim({"import", file, "--db", database_});
  EXPECT_EQ(again.status, 0);
  EXPECT_THAT(again.errors, HasSubstr(", in place of what it held\n"));
}

TEST_F(ProgramTest, ImportOfAMalformedFileFails) {
  const std::string file = directory_.write("a.graphml", "<graphml>\n<oops>\n");
  const Outcome outcome = ormasim({"import", file, "--db", database_});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.errors, StartsWith("ormasim: " + file + ":"));
  EXPECT_THAT(directory_.entries(), ElementsAre("a.graphml"));
}

TEST_F(ProgramTest, StatusOfAPortThatIsMissingFails) {
  ASSERT_EQ(ormasim({"generate", "--elements", "20", "--db", database_}).status, 0);
  const Outcome outcome = ormasim({"status", "--db", database_, "--port", "9999"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.output, "");
  EXPECT_EQ(outcome.errors,
            "ormasim: there is no port 9999 in " + database_ + "; its ids stand in table port\n");
}

}  // namespace
}  // namespace ormasim::testing
