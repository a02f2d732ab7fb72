// Standard error that systemd has connected with the journal.
#include "orma/log/journal.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <functional>
#include <sstream>

#include "log_fixture.h"
#include "orma/log/trace.h"

namespace orma {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

class Journal : public LogTest {
 protected:
  ~Journal() override { ::unsetenv("JOURNAL_STREAM"); }

  // Calls `action` with JOURNAL_STREAM naming standard error, `off` inodes beside it; the lines of
  // standard error.
  static std::vector<std::string> linesOf(const std::function<void()>& action, int off = 0) {
    testing::internal::CaptureStderr();
    struct stat status {};
    ::fstat(STDERR_FILENO, &status);
    const std::string stream =
        std::to_string(status.st_dev) + ":" + std::to_string(status.st_ino + off);
    ::setenv("JOURNAL_STREAM", stream.c_str(), 1);
    action();
    std::istringstream shown(testing::internal::GetCapturedStderr());
    std::vector<std::string> lines;
    for (std::string line; std::getline(shown, line);) lines.push_back(line);
    return lines;
  }

  static void writeOneOfEach() {
    configureLogWith(R"({"level": 9})");
    for (const int level : {0, 1, 3}) writeLog(level, "", "f", "u", 1, "text\nof two lines");
    NS_CORBA::TaTrace("%s", "traced");
  }
};

TEST_F(Journal, EachLineCarriesItsPriority) {
  EXPECT_THAT(linesOf(writeOneOfEach),
              ElementsAre(StartsWith("<3>20"), StartsWith("<6>20"), StartsWith("<7>20"),
                          testing::AllOf(StartsWith("<7>20"), HasSubstr("traced"))));
}

TEST_F(Journal, AnotherStreamGetsNone) {
  for (const std::string& line : linesOf(writeOneOfEach, 1)) EXPECT_THAT(line, StartsWith("20"));
}

TEST_F(Journal, JsonLinesCarryItToo) {
  EXPECT_THAT(linesOf([] {
                configureLogWith(R"({"format": "json"})");
                writeLog(0, "", "f", "u", 1, "text");
              }),
              ElementsAre(StartsWith("<3>{\"time\":")));
}

TEST_F(Journal, AStreamThatIsNoneIsTold) {
  for (const char* text : {"", ":", "1", "1:", "a:b", "1:2x", "99999999999999999999:1"}) {
    ::setenv("JOURNAL_STREAM", text, 1);
    EXPECT_FALSE(standardErrorIsJournal()) << text;
  }
  ::unsetenv("JOURNAL_STREAM");
  EXPECT_FALSE(standardErrorIsJournal());
}

}  // namespace
}  // namespace orma
