// Standard output: the answer and nothing else, and what happens when it cannot be written.
#include <gmock/gmock.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "world.h"

namespace systemtest {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

class Output : public World {
 protected:
  Output() { serve(); }
};

constexpr char kAnswer[] = "id,fdn\r\n12,NE=12\r\n";

TEST_F(Output, HoldsNothingThatServicesPrint) {
  configure(
      [](Json::Value& document) { document["bundles"].append(scriptedService("makePrinting")); });
  const Outcome outcome = agent({"--format", "csv", "res", "fdn", "12"});
  EXPECT_EQ(outcome.out, kAnswer);
  for (const char* printed : {"printed by init", "printed by ExitSvc", "Exit Bundle Service"}) {
    EXPECT_THAT(outcome.err, HasSubstr(printed));
  }
}

TEST_F(Output, HoldsNoLogLines) {
  const Outcome outcome = agent({"--log-level", "9", "--format", "csv", "res", "fdn", "12"});
  EXPECT_EQ(outcome.out, kAnswer);
  EXPECT_THAT(outcome.err, HasSubstr("EMFResMgrI::AdpDevID2FDN"));
}

TEST_F(Output, AFullDiskIsAnError) {
  ProcessSetup full;
  full.outputFile = "/dev/full";
  const Outcome outcome = agent({"res", "fdn", "12"}, full);
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err,
              HasSubstr("cannot write the answer to standard output: No space left on device"));
  const Outcome help = agent({"--help"}, full);
  EXPECT_EQ(help.status, 1);
  EXPECT_THAT(help.err, HasSubstr("cannot write to standard output"));
}

TEST_F(Output, AReaderThatIsGoneIsNoError) {
  ProcessSetup unread;
  unread.readOutput = false;
  const Outcome outcome = agent({"--format", "json", "topo", "devices"}, unread);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.signal, 0);
  EXPECT_THAT(outcome.err, testing::Not(HasSubstr("cannot write")));
}

TEST_F(Output, AClosedOutputIsAnErrorAndNoFileTakesItsPlace) {
  const Outcome outcome =
      Process({"/bin/sh", "-c", "exec \"$0\" --config \"$1\" topo device 12 >&-", ORMAAGENT,
               configuration_.string()})
          .finish();
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("cannot write the answer to standard output"));
  EXPECT_EQ(Inventory(database_).rows("PRAGMA integrity_check"), (Rows{{"ok"}}));
}

// One character set: what the table shows of a name, and what JSON makes of it.
struct SetCase {
  const char* name;
  int characterSetSwitch;
  const char* table;
  const char* json;
};

void PrintTo(const SetCase& set, std::ostream* out) { *out << set.name; }

class CharacterSets : public Output, public testing::WithParamInterface<SetCase> {
 protected:
  CharacterSets() {
    Inventory(database_).rows("UPDATE device SET name = '核心 Zürich' WHERE dev_id = 12");
    configure([](Json::Value& document) {
      document["text"]["characterSetSwitch"] = GetParam().characterSetSwitch;
    });
  }
};

TEST_P(CharacterSets, TablesCarryTheAgentsBytes) {
  const Outcome outcome = agent({"cache", "device", "12"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.out, HasSubstr(std::string("  ") + GetParam().table + "\n"));
}

TEST_P(CharacterSets, CsvCarriesTheAgentsBytes) {
  EXPECT_THAT(agent({"--format", "csv", "cache", "device", "12"}).out,
              HasSubstr(std::string(",") + GetParam().table + "\r\n"));
}

TEST_P(CharacterSets, JsonIsUtf8) {
  EXPECT_THAT(agent({"--format", "json", "cache", "device", "12"}).out,
              HasSubstr(std::string("\"name\": \"") + GetParam().json + "\"}"));
}

TEST_P(CharacterSets, NamesAreAskedForInTheAgentsSet) {
  EXPECT_EQ(agent({"cache", "name", GetParam().table}).status, 0);
}

// GBK has no ü and ISO-8859-1 no 核: the conversion puts a question mark.
constexpr SetCase kSets[] = {
    {"Utf8", 0, "核心 Zürich", "核心 Zürich"},
    {"Gbk", 1, "\xba\xcb\xd0\xc4 Z\xa8\xb9rich",
     "\\\\xBA\\\\xCB\\\\xD0\\\\xC4 Z\\\\xA8\\\\xB9rich"},
    {"Latin1", 2, "?? Z\xfcrich", "?? Z\\\\xFCrich"},
};

INSTANTIATE_TEST_SUITE_P(Switch, CharacterSets, testing::ValuesIn(kSets),
                         [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace systemtest
