#include <gmock/gmock.h>
#include <json/reader.h>
#include <json/value.h>
#include <unistd.h>

#include <chrono>
#include <ctime>
#include <memory>

#include "log_fixture.h"

namespace orma {
namespace {

using testing::ElementsAre;
using testing::MatchesRegex;

Json::Value readStrictly(const std::string& line) {
  Json::CharReaderBuilder builder;
  Json::CharReaderBuilder::strictMode(&builder.settings_);
  const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
  Json::Value value;
  std::string errors;
  EXPECT_TRUE(reader->parse(line.data(), line.data() + line.size(), &value, &errors))
      << line << "\n"
      << errors;
  return value;
}

class TextLines : public LogTest {
 protected:
  TextLines() { logToFile(); }
};

TEST_F(TextLines, CarryEveryField) {
  writeLog(1, "ii_base_bundle/ii_base_log", "ormaemfsvc", "unknown", 57, "started 3 services");
  ASSERT_EQ(lines().size(), 1u);
  EXPECT_THAT(lines()[0],
              MatchesRegex("[0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9]{2}:[0-9]{2}:[0-9]{2}\\.[0-9]{3}Z " +
                           std::to_string(::gettid()) +
                           " info ormaemfsvc:57 unknown ii_base_bundle/ii_base_log started 3 "
                           "services"));
}

TEST_F(TextLines, ShowADashForAnEmptyField) {
  writeLog(1, "", "", "", 0, "");
  EXPECT_EQ(onlyLine(), "info -:0 - - ");
}

TEST_F(TextLines, NameTheLevel) {
  logToFile(R"(,"level": 9)");
  for (const int level : {-1, 0, 1, 2, 3, 9}) writeLog(level, "", "f", "u", 1, "x");
  std::vector<std::string> levels;
  for (const std::string& line : lines()) {
    const auto start = line.find(' ', line.find(' ') + 1) + 1;
    levels.push_back(line.substr(start, line.find(' ', start) - start));
  }
  EXPECT_THAT(levels, ElementsAre("-1", "error", "info", "2", "detail", "9"));
}

TEST_F(TextLines, KeepAMessageOnOneLine) {
  writeLog(1, "lo\ngger", "fi\nle", "fun\nction", 1,
           std::string("a\nb\r\tc\x1B[2J\x01\x7F\0d", 14));
  EXPECT_EQ(onlyLine(),
            "info fi\\nle:1 fun\\nction lo\\ngger a\\nb\\r\\tc\\x1B[2J\\x01\\x7F\\x00d");
}

TEST_F(TextLines, LeaveOtherBytesAsTheyAre) {
  writeLog(1, "", "f", "u", 1, "中国 \xB0\xA1 \xFF {} %s%n \\ \"");
  EXPECT_EQ(onlyLine(), "info f:1 u - 中国 \xB0\xA1 \xFF {} %s%n \\ \"");
}

TEST_F(TextLines, ShowTheTimeInUtc) {
  const auto before = std::time(nullptr);
  writeLog(1, "", "f", "u", 1, "x");
  const auto after = std::time(nullptr);
  std::tm parts{};
  ASSERT_NE(::strptime(lines().at(0).c_str(), "%Y-%m-%dT%H:%M:%S", &parts), nullptr);
  EXPECT_GE(::timegm(&parts), before);
  EXPECT_LE(::timegm(&parts), after);
}

class JsonLines : public LogTest {
 protected:
  JsonLines() { logToFile(R"(,"format": "json")"); }

  Json::Value onlyMessage() const {
    const std::vector<std::string> all = lines();
    EXPECT_EQ(all.size(), 1u);
    return all.size() == 1 ? readStrictly(all.front()) : Json::Value();
  }
};

TEST_F(JsonLines, CarryEveryField) {
  writeLog(0, "ii_domain_bundle/ii_domain_model/debug", "emftopointerface", "unknown", 57, "lost");
  Json::Value message = onlyMessage();
  EXPECT_THAT(message["time"].asString(), MatchesRegex("[-0-9]+T[0-9:]+\\.[0-9]{3}Z"));
  message.removeMember("time");
  Json::Value expected;
  expected["thread"] = ::gettid();
  expected["level"] = "error";
  expected["logger"] = "ii_domain_bundle/ii_domain_model/debug";
  expected["file"] = "emftopointerface";
  expected["function"] = "unknown";
  expected["line"] = 57;
  expected["text"] = "lost";
  EXPECT_EQ(message, expected);
}

TEST_F(JsonLines, GiveEveryTextBack) {
  const std::string texts[] = {"%s%n%d",
                               "\"quoted\" \\ /",
                               "two\nlines\r\n\ttab",
                               "\x01\x02\x1F\x7F",
                               "中国 é 😀",
                               std::string("a\0b", 3),
                               "",
                               "{\"text\":\"x\"}",
                               "\",\"level\":\"error\"}"};
  for (const std::string& text : texts) writeLog(1, text, text, text, 1, text);
  const std::vector<std::string> all = lines();
  ASSERT_EQ(all.size(), std::size(texts));
  for (std::size_t i = 0; i < all.size(); ++i) {
    const Json::Value message = readStrictly(all[i]);
    for (const char* member : {"text", "logger", "file", "function"}) {
      EXPECT_EQ(message[member].asString(), texts[i]) << member;
    }
  }
}

TEST_F(JsonLines, ShowEachByteThatIsNoUtf8AsTheReplacementCharacter) {
  writeLog(1, "", "f", "u", 1,
           "a\xFF\xC0\x80"
           "b\xE4\xB8"
           "c\xED\xA0\x80");
  EXPECT_EQ(onlyMessage()["text"].asString(),
            "a\uFFFD\uFFFD\uFFFDb\uFFFD\uFFFDc\uFFFD\uFFFD\uFFFD");
}

TEST_F(JsonLines, HoldEveryByte) {
  std::string text;
  for (int byte = 0; byte < 256; ++byte) text += static_cast<char>(byte);
  writeLog(1, "", "f", "u", 1, text);
  const std::string shown = onlyMessage()["text"].asString();
  EXPECT_EQ(shown.substr(0, 128), text.substr(0, 128));
  EXPECT_EQ(shown.size(), 128u + 128 * std::string("\uFFFD").size());
}

}  // namespace
}  // namespace orma
