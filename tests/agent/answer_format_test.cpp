#include "answer_format.h"

#include <gtest/gtest.h>
#include <json/reader.h>

#include <cmath>
#include <limits>
#include <memory>

namespace ormaagent {
namespace {

struct Place {
  std::int64_t id;
  std::string name;
};

constexpr Column<Place> kPlace[] = {
    {"id", [](const Place& place) -> Value { return place.id; }},
    {"name", [](const Place& place) -> Value { return place.name; }},
};

Answer places(std::vector<Place> list, std::int64_t result = 0) {
  return answerOf(result, kPlace, list);
}

std::string table(const Answer& answer, CharacterSet set = CharacterSet::kUtf8) {
  return formatAnswer(answer, Format::kTable, set);
}
std::string json(const Answer& answer) {
  return formatAnswer(answer, Format::kJson, CharacterSet::kUtf8);
}
std::string csv(const Answer& answer, CharacterSet set = CharacterSet::kUtf8) {
  return formatAnswer(answer, Format::kCsv, set);
}

Json::Value parsed(const std::string& document) {
  Json::CharReaderBuilder builder;
  Json::CharReaderBuilder::strictMode(&builder.settings_);
  const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
  Json::Value root;
  std::string errors;
  EXPECT_TRUE(reader->parse(document.data(), document.data() + document.size(), &root, &errors))
      << errors << document;
  return root;
}

TEST(Table, ColumnsFitTheirWidestTextAndNumbersStandToTheRight) {
  EXPECT_EQ(table(places({{2, "core-1"}, {1000, "核心"}})),
            "  id  name\n"
            "----  ------\n"
            "   2  core-1\n"
            "1000  核心\n");
}

struct TextFirst {
  std::string name;
  std::int64_t id;
};

TEST(Table, WideCharactersKeepTheNextColumnAligned) {
  constexpr Column<TextFirst> kColumns[] = {
      {"name", [](const TextFirst& row) -> Value { return row.name; }},
      {"id", [](const TextFirst& row) -> Value { return row.id; }},
  };
  const std::vector<TextFirst> rows = {{"核心", 1}, {"Zürich", 22}};
  EXPECT_EQ(table(answerOf(0, kColumns, rows)),
            "name    id\n"
            "------  --\n"
            "核心     1\n"
            "Zürich  22\n");
}

TEST(Table, WithoutRecordsTheHeadStays) {
  EXPECT_EQ(table(places({})),
            "id  name\n"
            "--  ----\n");
}

TEST(Table, BlanksAtTheEndOfTheLastTextStay) {
  EXPECT_EQ(table(places({{1, "A  B  "}})),
            "id  name\n"
            "--  ------\n"
            " 1  A  B  \n");
}

TEST(Table, ATreeIsIndentedByItsFirstField) {
  Answer tree;
  tree.fields = {"label", "count"};
  tree.records = {{std::string("root"), std::int64_t{2}},
                  {std::string("child"), std::int64_t{0}},
                  {std::string("核心"), std::int64_t{10}}};
  tree.depths = {0, 1, 2};
  EXPECT_EQ(table(tree),
            "label     count\n"
            "--------  -----\n"
            "root          2\n"
            "  child       0\n"
            "    核心     10\n");
  EXPECT_EQ(csv(tree), "label,count\r\nroot,2\r\nchild,0\r\n核心,10\r\n");
}

TEST(Table, ControlsAreEscaped) {
  EXPECT_EQ(table(places({{1, "a\x1b[2J\nb"}})),
            "id  name\n"
            "--  -------------\n"
            " 1  a\\x1B[2J\\x0Ab\n");
}

TEST(Table, TextsInTheAgentsCharacterSetGoOutAsBytes) {
  EXPECT_EQ(table(places({{1, "\xba\xcb\xd0\xc4"}}), CharacterSet::kGbk),
            "id  name\n"
            "--  ----\n"
            " 1  \xba\xcb\xd0\xc4\n");
}

TEST(JsonDocument, HoldsResultAndRecordsInTheirOrder) {
  EXPECT_EQ(json(places({{2, "core-1"}, {3, "核心"}}, 7)),
            "{\"result\": 7, \"records\": [\n"
            "  {\"id\": 2, \"name\": \"core-1\"},\n"
            "  {\"id\": 3, \"name\": \"核心\"}\n"
            "]}\n");
  EXPECT_EQ(json(places({}, -1)), "{\"result\": -1, \"records\": []}\n");
}

TEST(JsonDocument, EveryByteComesBackOrIsEscaped) {
  std::string all;
  for (int byte = 0; byte < 0x80; ++byte) all += static_cast<char>(byte);
  all += "\u0085\u009b\u00a0é核\U0001F600";
  EXPECT_EQ(parsed(json(places({{1, all}})))["records"][0]["name"].asString(), all);
}

TEST(JsonDocument, TextsThatAreNoUtf8StayReadable) {
  const std::string document = json(places({{1, "\xba\xcb-1"}}));
  EXPECT_NE(document.find("\"\\\\xBA\\\\xCB-1\""), std::string::npos) << document;
  EXPECT_EQ(parsed(document)["records"][0]["name"].asString(), "\\xBA\\xCB-1");
}

TEST(JsonDocument, HoldsNothingThatATerminalActsOn) {
  const std::string document = json(places({{1, "\x1b\x7f\u009b"}}));
  EXPECT_NE(document.find("\"\\u001B\\u007F\\u009B\""), std::string::npos) << document;
}

TEST(JsonDocument, NumbersKeepTheirWholeRange) {
  Answer answer = places({{std::numeric_limits<std::int64_t>::min(), ""}});
  answer.fields.push_back("code");
  answer.records[0].push_back(std::numeric_limits<std::uint64_t>::max());
  EXPECT_EQ(json(answer),
            "{\"result\": 0, \"records\": [\n"
            "  {\"id\": -9223372036854775808, \"name\": \"\", \"code\": 18446744073709551615}\n"
            "]}\n");
}

TEST(Csv, HasAHeadAndLinesAfterTheStandard) {
  EXPECT_EQ(csv(places({{2, "core-1"}, {3, "核心"}})), "id,name\r\n2,core-1\r\n3,核心\r\n");
  EXPECT_EQ(csv(places({})), "id,name\r\n");
}

TEST(Csv, SeparatorsAndQuotesAreQuoted) {
  EXPECT_EQ(csv(places({{2, "a,b"}, {3, "say \"x\""}})),
            "id,name\r\n2,\"a,b\"\r\n3,\"say \"\"x\"\"\"\r\n");
}

TEST(Csv, LineBreaksAndControlsAreEscaped) {
  EXPECT_EQ(csv(places({{2, "a\r\nb\x1b"}})), "id,name\r\n2,a\\x0D\\x0Ab\\x1B\r\n");
}

TEST(Csv, TextsInTheAgentsCharacterSetGoOutAsBytes) {
  EXPECT_EQ(csv(places({{1, "Z\xfcrich"}}), CharacterSet::kLatin1), "id,name\r\n1,Z\xfcrich\r\n");
}

// One record of every kind of value, and the first record's values missing.
Answer everyKind() {
  Answer answer;
  answer.fields = {"whole", "real", "text"};
  answer.records = {{std::monostate(), std::monostate(), std::monostate()},
                    {std::int64_t{-7}, 0.5, std::string()},
                    {std::uint64_t{18446744073709551615U}, 3.0, "a"}};
  return answer;
}

TEST(Values, ThatAreNoneAreNullInJsonAndEmptyElsewhere) {
  EXPECT_EQ(json(everyKind()),
            "{\"result\": 0, \"records\": [\n"
            "  {\"whole\": null, \"real\": null, \"text\": null},\n"
            "  {\"whole\": -7, \"real\": 0.5, \"text\": \"\"},\n"
            "  {\"whole\": 18446744073709551615, \"real\": 3.0, \"text\": \"a\"}\n"
            "]}\n");
  EXPECT_EQ(csv(everyKind()), "whole,real,text\r\n,,\r\n-7,0.5,\r\n18446744073709551615,3.0,a\r\n");
}

TEST(Values, ThatAreNoneLeaveTheNumbersToTheRight) {
  EXPECT_EQ(table(everyKind()),
            "               whole  real  text\n"
            "--------------------  ----  ----\n"
            "                            \n"
            "                  -7   0.5  \n"
            "18446744073709551615   3.0  a\n");
}

struct RealCase {
  double number;
  const char* text;
  const char* json;
};

TEST(Values, RealNumbersReadBackToThemselves) {
  const RealCase cases[] = {
      {0.1, "0.1", "0.1"},
      {-0.0, "-0.0", "-0.0"},
      {1e300, "1e+300", "1e+300"},
      {1.0 / 3, "0.3333333333333333", "0.3333333333333333"},
      {5e-324, "5e-324", "5e-324"},
      {-HUGE_VAL, "-Infinity", "\"-Infinity\""},
      {HUGE_VAL, "Infinity", "\"Infinity\""},
      {std::numeric_limits<double>::quiet_NaN(), "NaN", "\"NaN\""},
  };
  for (const RealCase& row : cases) {
    Answer answer;
    answer.fields = {"r"};
    answer.records = {{row.number}};
    EXPECT_EQ(csv(answer), std::string("r\r\n") + row.text + "\r\n");
    EXPECT_EQ(json(answer),
              std::string("{\"result\": 0, \"records\": [\n  {\"r\": ") + row.json + "}\n]}\n");
    EXPECT_TRUE(parsed(json(answer)).isObject());
  }
}

TEST(Values, WithoutFieldsThereIsNoTable) {
  EXPECT_EQ(table(Answer()), "");
  EXPECT_EQ(csv(Answer()), "");
  EXPECT_EQ(json(Answer()), "{\"result\": 0, \"records\": []}\n");
}

struct Moment {
  Value time;
};

constexpr Column<Moment> kMoment[] = {
    {"time", [](const Moment& moment) -> Value { return moment.time; }}};

const std::vector<Moment> kMoments = {{UtcTime{"2026-11-21T08:30:05Z"}}, {std::monostate()}};

TEST(Times, AreIso8601ForProgramsAndReadableInTables) {
  const Answer answer = answerOf(0, kMoment, kMoments);
  EXPECT_EQ(table(answer), "time\n-------------------\n2026-11-21 08:30:05\n\n");
  EXPECT_EQ(parsed(json(answer))["records"][0]["time"].asString(), "2026-11-21T08:30:05Z");
  EXPECT_TRUE(parsed(json(answer))["records"][1]["time"].isNull());
  EXPECT_EQ(csv(answer), "time\r\n2026-11-21T08:30:05Z\r\n\r\n");
}

TEST(ClosingRecords, AreLeftOutOfTablesAlone) {
  Answer answer = places({{2, "core-1"}, {-999, ""}});
  answer.closingRecords = 1;
  EXPECT_EQ(table(answer), "id  name\n--  ------\n 2  core-1\n");
  EXPECT_EQ(parsed(json(answer))["records"].size(), 2U);
  EXPECT_EQ(csv(answer), "id,name\r\n2,core-1\r\n-999,\r\n");
}

}  // namespace
}  // namespace ormaagent
