// The database trace, the console and the ASN.1 trace.
#include <cwchar>

#include "file_log_fixture.h"

namespace emf::test {
namespace {

using emf::doubles::platform;
using ::testing::_;
using ::testing::ElementsAre;
using ::testing::FieldsAre;
using ::testing::IsEmpty;

constexpr char kTag[] = "[ORMACORBA DBLog][SATrace]:";

class DatabaseTrace : public emf::doubles::PlatformTest {};

TEST_F(DatabaseTrace, IsATaggedTraceOfLevel1) {
  DbTrace("%d rows of %s", 7, "100%");
  EXPECT_THAT(platform().trace.lines(),
              ElementsAre(FieldsAre("TaDebug", 1, "emfglobal", "unknown", _,
                                    std::string(kTag) + "7 rows of 100%")));
}

TEST_F(DatabaseTrace, TextOf4095BytesIsWhole) {
  DbTrace("%s", bytes(4095).c_str());
  EXPECT_THAT(platform().trace.texts(), ElementsAre(kTag + bytes(4095)));
}

TEST_F(DatabaseTrace, TextOf4096BytesIsCutAndReported) {
  DbTrace("%s", bytes(4096).c_str());
  EXPECT_THAT(platform().trace.lines(),
              ElementsAre(FieldsAre("TaDebug", 1, "emfglobal", "unknown", _, "vsnprintf_s failed."),
                          FieldsAre("TaDebug", 1, "emfglobal", "unknown", _, kTag + bytes(4095))));
}

TEST_F(DatabaseTrace, TextThatCannotBeFormattedLeavesTheTag) {
  DbTrace("%lc", static_cast<wint_t>(0x7FFFFFFF));
  EXPECT_THAT(platform().trace.texts(), ElementsAre("vsnprintf_s failed.", kTag));
}

class Console : public FileLogs {};

TEST_F(Console, PrintsTextsThatAreNoFormats) {
  const ChildOutcome outcome = run([] { ConsolePrint("%d of %s\n", 7, "100%s"); });
  EXPECT_EQ(outcome.output, "7 of 100%s\n");
  EXPECT_THAT(logNames(), IsEmpty());
}

TEST_F(Console, TextOf2047BytesIsWhole) {
  EXPECT_EQ(run([] { ConsolePrint("%s", bytes(2047).c_str()); }).output, bytes(2047));
}

TEST_F(Console, OfTextThatDoesNotFitNothingIsPrinted) {
  EXPECT_EQ(run([] {
              ConsolePrint("%s", bytes(2048).c_str());
              ConsolePrint("%lc", static_cast<wint_t>(0x7FFFFFFF));
              ConsolePrint("next");
            }).output,
            "next");
}

TEST_F(Console, ThatIsOffPrintsNothing) {
  EXPECT_EQ(run([] {
              emf::enableConsolePrint(false);
              ConsolePrint("lost");
              emf::enableConsolePrint(true);
              ConsolePrint("printed");
            }).output,
            "printed");
}

class AsnTrace : public FileLogs {
 protected:
  static std::string header() {
    return "Thread:" + std::to_string(static_cast<int>(::pthread_self())) + ", ASN Trace:\n";
  }
};

TEST_F(AsnTrace, OfTheEmptyBufferIsItsHeader) {
  runWhole([this] {
    WriteAsnTrace();
    EXPECT_EQ(contentOfLog("agent.log"), header());
  });
}

TEST_F(AsnTrace, GoesToTheAgentLogAlone) {
  const ChildOutcome outcome = run([this] {
    emf::writeAsnText("{ key 100%s }\n");
    EXPECT_EQ(contentOfLog("agent.log"), header() + "{ key 100%s }\n");
  });
  EXPECT_EQ(outcome.status, kChildDone);
  EXPECT_EQ(outcome.output, "");
}

TEST_F(AsnTrace, GoesWhereItIsSent) {
  const ChildOutcome outcome = run([] {
    emf::sendAsnTraceTo(true, false);
    emf::writeAsnText("{ key 7 }\n");
  });
  EXPECT_THAT(outcome.output, ::testing::MatchesRegex("Thread:-?[0-9]+, ASN Trace:\n"
                                                      "\\{ key 7 \\}\n"));
  EXPECT_THAT(logNames(), IsEmpty());
}

TEST_F(AsnTrace, IsPrintedBeforeItIsWritten) {
  std::filesystem::create_directory(logFile("agent1.log"));
  const ChildOutcome outcome = run([] {
    emf::sendAsnTraceTo(true, true);
    writeLog(bytes(100000));
    emf::writeAsnText("{ key 7 }\n");  // the process ends in its rotation
  });
  EXPECT_THAT(outcome.output, ::testing::MatchesRegex("Thread:-?[0-9]+, ASN Trace:\n"
                                                      "\\{ key 7 \\}\n"
                                                      "in .WriteLog. open file .*"));
}

TEST_F(AsnTrace, HeaderAndTextAreTwoTextsOfTheLog) {
  runWhole([this] {
    writeLog(bytes(100000));
    emf::writeAsnText("{ key 7 }\n");
    EXPECT_EQ(contentOfLog("agent.log"), bytes(100000) + header());
    EXPECT_EQ(contentOfLog("agent1.log"), "{ key 7 }\n");
  });
}

TEST_F(AsnTrace, BufferKeepsItsText) {
  runWhole([this] {
    emf::writeAsnText("text\n");
    WriteAsnTrace();
    EXPECT_EQ(contentOfLog("agent.log"), header() + "text\n" + header() + "text\n");
    emf::writeAsnText("next\n");
    emf::writeAsnText(nullptr);
    EXPECT_EQ(contentOfLog("agent.log"),
              header() + "text\n" + header() + "text\n" + header() + "next\n" + header());
  });
}

TEST_F(AsnTrace, TextThatFillsTheBufferIsWhole) {
  runWhole([this] {
    emf::writeAsnText(bytes(10239).c_str());
    EXPECT_EQ(contentOfLog("agent.log"), header() + bytes(10239));
  });
}

TEST_F(AsnTrace, LongerTextIsCutAndSaysSo) {
  runWhole([this] {
    emf::writeAsnText(bytes(10240).c_str());
    EXPECT_EQ(contentOfLog("agent.log"), header() + bytes(10190) + "\n...More ASN not print.\n");
    emf::writeAsnText(bytes(10200, 'y').c_str());
    WriteAsnTrace();
    EXPECT_THAT(contentOfLog("agent.log"), ::testing::EndsWith(header() + bytes(10200, 'y')));
  });
}

TEST_F(AsnTrace, LongerTextSaysSoOnStandardOutputToo) {
  const ChildOutcome outcome = run([] {
    emf::sendAsnTraceTo(true, false);
    emf::writeAsnText(bytes(10240).c_str());
  });
  EXPECT_THAT(outcome.output,
              ::testing::EndsWith(", ASN Trace:\n" + bytes(10190) + "\n...More ASN not print.\n"));
}

}  // namespace
}  // namespace emf::test
