// The fast reader against jsoncpp's own: equal results, to the type of each number.
#include "json_reader.h"

#include <gtest/gtest.h>
#include <json/reader.h>
#include <json/writer.h>

#include <cstring>
#include <random>
#include <sstream>
#include <string_view>

using orma::rest::JsonOutcome;
using orma::rest::JsonReader;

namespace {

constexpr std::size_t kNesting = 100;

bool readByJsoncpp(const std::string& text, Json::Value& value) {
  Json::CharReaderBuilder builder;
  Json::CharReaderBuilder::strictMode(&builder.settings_);
  builder["strictRoot"] = false;
  builder["rejectDupKeys"] = false;
  std::string problem;
  const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
  return reader->parse(text.data(), text.data() + text.size(), &value, &problem);
}

std::uint64_t bitsOf(double number) {
  std::uint64_t bits = 0;
  std::memcpy(&bits, &number, sizeof bits);
  return bits;
}

// Stricter than operator==: the types of numbers and the sign of zero count too.
bool same(const Json::Value& a, const Json::Value& b) {
  if (a.type() != b.type() || a.size() != b.size()) return false;
  if (a.isDouble() && a.type() == Json::realValue) {
    return bitsOf(a.asDouble()) == bitsOf(b.asDouble());
  }
  if (a.isObject() && a.getMemberNames() != b.getMemberNames()) return false;
  if (!a.isObject() && !a.isArray()) return a == b;
  for (auto x = a.begin(), y = b.begin(); x != a.end(); ++x, ++y) {
    if (!same(*x, *y)) return false;
  }
  return true;
}

struct Answer {
  JsonOutcome outcome;
  Json::Value value;
  std::string reason;
};

Answer read(std::string text, std::size_t maxNesting = kNesting) {
  Answer answer;
  JsonReader reader(maxNesting);
  answer.outcome = reader.read(text, answer.value, answer.reason);
  return answer;
}

void expectSame(const std::string& text, JsonOutcome outcome = JsonOutcome::Read) {
  SCOPED_TRACE(text);
  Json::Value expected;
  ASSERT_TRUE(readByJsoncpp(text, expected));
  const Answer answer = read(text);
  EXPECT_EQ(answer.outcome, outcome) << answer.reason;
  EXPECT_TRUE(same(answer.value, expected)) << answer.value << " and not " << expected;
}

void expectRefused(const std::string& text) {
  SCOPED_TRACE(text);
  const Answer answer = read(text);
  EXPECT_EQ(answer.outcome, JsonOutcome::Refused);
  EXPECT_FALSE(answer.reason.empty());
  EXPECT_TRUE(answer.value.isNull());
}

}  // namespace

TEST(JsonReader, GivesWhatJsoncppGives) {
  for (const char* text :
       {"null", "true", "false", "0", "-0", "7", "-7", "\"\"", "\"text\"", "[]", "{}", " [ ] ",
        "\t{\r\n}\n", "[[],{},[{}]]", R"({"a":{"b":[1,2,{"c":null}]},"":1})",
        R"(["\"\\\/\b\f\n\r\t","\u0041\u00e9\u4e2d","\ud83d\ude00","a\u0000b"])",
        R"({"a\u0000b":1,"a":2})", "[\"网元\",\"Zürich\",\"\xf0\x9f\x98\x80\"]",
        R"({"isTruncated":false,"marker":"","objList":[{"nativeId":"NE=2","typeId":131077}]})"}) {
    expectSame(text);
  }
}

// Objects that have the names of the object before them are built another way.
TEST(JsonReader, GivesWhatJsoncppGivesForListsOfAlikeObjects) {
  for (const char* object :
       {"{}", R"({"b":1,"a":"x"})", R"({"a":{"y":1},"a":2,"b":3})", R"({"a":1,"b":2,"a":[3]})",
        R"({"list":[{"x":1,"w":2},{"x":3,"w":4}],"more":{"x":5}})", R"({"":null,"é":-0.0})"}) {
    const std::string one = object;
    expectSame("[" + one + "," + one + "," + one + "]");
    expectSame("[" + one + R"(,{"a":1,"b":2},{"b":2,"a":1},{"b":3},{"b":4},7,{"b":5},)" + one +
               "," + one + "]");
  }
}

TEST(JsonReader, GivesWhatJsoncppGivesForObjectsOfAnySize) {
  std::string members;
  for (int size = 1; size <= 100; ++size) {
    members += (size == 1 ? "\"m" : ",\"m") + std::to_string(size * 37 % 101) +
               "\":" + std::to_string(size);
    const std::string object = "{" + members + "}";
    expectSame("[" + object + "," + object + "," + object + "]");
  }
}

TEST(JsonReader, TakesHalfSurrogatePairsAsJsoncppDoes) {
  expectSame(R"("a\udc00b")");
  expectSame(R"("a\ud800\u0041b")");
}

TEST(JsonReader, GivesNumbersTheTypesOfJsoncpp) {
  for (const char* text : {"2147483647",
                           "2147483648",
                           "-2147483649",
                           "4294967296",
                           "9007199254740993",
                           "9223372036854775807",
                           "-9223372036854775808",
                           "9223372036854775808",
                           "18446744073709551615",
                           "0.0",
                           "-0.0",
                           "-0e1",
                           "0.1",
                           "1.0",
                           "-1.5",
                           "1e3",
                           "1E+3",
                           "1e-3",
                           "123456789.123456789",
                           "1.7976931348623157e308",
                           "2.2250738585072014e-308",
                           "5e-324",
                           "1e-400",
                           "3.14159265358979323846264338327950288419716939937510582",
                           "0.1000000000000000055511151231257827021181583404541015625",
                           "9007199254740993.0",
                           "100000000000000000000e-20"}) {
    expectSame(text);
    expectSame("[" + std::string(text) + "]");
  }
}

TEST(JsonReader, GivesIntegersBeyond64BitsAsDoubles) {
  for (const char* text : {"18446744073709551616", "-9223372036854775809",
                           "[1,1e2,"
                           "100000000000000000000000000000]",
                           R"({"a":-18446744073709551616})"}) {
    expectSame(text);
  }
}

TEST(JsonReader, LastOfMembersWithOneNameStays) {
  expectSame(R"({"a":1,"a":2})");
  expectSame(R"({"a":{"x":1},"b":0,"a":{"y":2}})");
  expectSame(R"({"a":[1,2],"a":"text","a":[3]})");
  EXPECT_EQ(read(R"({"a":{"x":1},"a":{"y":2}})").value["a"].size(), 1u);
}

TEST(JsonReader, PassesOverAByteOrderMark) {
  expectSame("\xEF\xBB\xBF{\"a\":1}");
  expectSame("\xEF\xBB\xBF[18446744073709551616]");
}

TEST(JsonReader, KeepsInvalidUtf8ByteForByte) {
  for (const char* bytes : {"\xff", "\xc3", "\xc3(", "\xe4\xb8", "\xed\xa0\x80", "\xc0\xaf",
                            "\xf5\x80\x80\x80", "\x80"}) {
    expectSame("{\"name\":\"a" + std::string(bytes) + "b\",\"" + bytes + "\":[1,2.5,true]}",
               JsonOutcome::ReadInvalidUtf8);
  }
}

TEST(JsonReader, RefusesWhatIsNoJson) {
  for (const char* text : {"",
                           " ",
                           "{",
                           "[",
                           "]",
                           "[1,]",
                           "[,1]",
                           "{\"a\":1,}",
                           "{\"a\"}",
                           "{a:1}",
                           "{'a':1}",
                           "[1 2]",
                           "{\"a\":1 \"b\":2}",
                           "[1]x",
                           "[1][2]",
                           "1 2",
                           "nul",
                           "True",
                           "NaN",
                           "Infinity",
                           "-",
                           "+1",
                           ".5",
                           "1.",
                           "01",
                           "-01",
                           "1e",
                           "1e+",
                           "0x10",
                           "1e400",
                           "-1e400",
                           "\"",
                           "\"a",
                           "\"\\x\"",
                           "\"\\u12\"",
                           "\"\\ud800\"",

                           "\"a\nb\"",
                           "\"\\",
                           "/*c*/1",
                           "[1]//c",
                           "<html></html>",
                           "[\"a\x01\"]"}) {
    expectRefused(text);
  }
  expectRefused(std::string("[1]\0", 4));
  expectRefused(std::string("\0", 1));
  expectRefused("[1]\xff");
}

// The second, slower way of texts with broken UTF-8 or huge integers must not open a side door.
TEST(JsonReader, RefusesTheSameBesideHugeIntegersAndInvalidUtf8) {
  for (const char* text :
       {"[1,]",        "[,1]",   "{\"a\"}", "[1 2]",   "[1]x",    "[nul]",    "[NaN]",
        "[1.]",        "[01]",   "[-]",     "[1e]",    "[1e400]", "\"a\nb\"", "\"\\x\"",
        "\"\\ud800\"", "/*c*/1", "[1",      "{'a':1}", "[\"a]",   "[\"a\\"}) {
    expectRefused("[18446744073709551616," + std::string(text) + "]");
    expectRefused("[\"\xff\"," + std::string(text) + "]");
  }
  expectRefused(std::string("[18446744073709551616]\0x", 24));
}

TEST(JsonReader, RefusesEveryPrefixOfADocument) {
  const std::string whole = R"({"objList":[{"nativeId":"NE=2","typeId":-1.5e3,"on":true}]})";
  for (std::size_t length = 0; length < whole.size(); ++length) {
    expectRefused(whole.substr(0, length));
    expectRefused("[\"\xff\"," + whole.substr(0, length));
  }
  expectSame(whole);
}

TEST(JsonReader, NestingUpToTheLimitIsRead) {
  const auto nested = [](std::size_t levels, const std::string& inside) {
    return std::string(levels, '[') + inside + std::string(levels, ']');
  };
  for (const std::size_t limit : {std::size_t{1}, std::size_t{100}, std::size_t{1000}}) {
    for (const char* inside : {"", "1", "18446744073709551616", "\"\xff\""}) {
      EXPECT_NE(read(nested(limit, inside), limit).outcome, JsonOutcome::Refused) << limit;
      const Answer answer = read(nested(limit + 1, inside), limit);
      EXPECT_EQ(answer.outcome, JsonOutcome::Refused);
      EXPECT_EQ(answer.reason,
                "nested deeper than " + std::to_string(limit) + " levels (rest.maxNesting)");
    }
  }
  EXPECT_EQ(read(R"({"a":{"b":{}}})", 2).outcome, JsonOutcome::Refused);
  EXPECT_EQ(read(R"([{"a":[]},[[]],{"b":{}}])", 3).outcome, JsonOutcome::Read);
  EXPECT_EQ(read(R"([{"a":1},{"a":2},{"a":[]}])", 3).outcome, JsonOutcome::Read);
  EXPECT_EQ(read(R"([{"a":1},{"a":2},{"a":[[]]}])", 3).outcome, JsonOutcome::Refused);
  EXPECT_EQ(read(R"([{"a":1},{"a":2}])", 1).outcome, JsonOutcome::Refused);
}

TEST(JsonReader, NestingOf100000IsRefused) {
  const std::string deep(100000, '[');
  const std::string reason = "nested deeper than 100 levels (rest.maxNesting)";
  EXPECT_EQ(read(deep + std::string(100000, ']')).reason, reason);
  EXPECT_EQ(read("[\"\xff\"," + deep + std::string(100000, ']') + "]").reason, reason);
  EXPECT_EQ(read(deep).outcome, JsonOutcome::Refused);
  std::string objects;
  for (int level = 0; level < 100000; ++level) objects += "{\"a\":";
  EXPECT_EQ(read(objects + "1" + std::string(100000, '}')).reason, reason);
}

TEST(JsonReader, OneReaderReadsTextAfterText) {
  JsonReader reader(kNesting);
  Json::Value value;
  std::string reason;
  for (const int size : {1, 100000, 10}) {
    std::string text = "[\"" + std::string(static_cast<std::size_t>(size), 'x') + "\"]";
    ASSERT_EQ(reader.read(text, value, reason), JsonOutcome::Read);
    EXPECT_EQ(value[0].asString().size(), static_cast<std::size_t>(size));
    std::string broken = "[";
    EXPECT_EQ(reader.read(broken, value, reason), JsonOutcome::Refused);
    EXPECT_TRUE(value.isNull());
  }
}

namespace {

// Random JSON texts, in the ways that a writer may choose: white space, escapes, number forms.
class RandomJson {
 public:
  explicit RandomJson(unsigned seed) : random_(seed) {}

  std::string document() {
    text_.clear();
    value(0);
    return text_;
  }

 private:
  unsigned below(unsigned bound) {
    return std::uniform_int_distribution<unsigned>(0, bound - 1)(random_);
  }
  void space() {
    constexpr std::string_view kSpaces[] = {"", "", "", " ", "\n", "\t", "\r\n  "};
    text_ += kSpaces[below(std::size(kSpaces))];
  }

  void value(unsigned depth) {
    space();
    const unsigned kind = below(depth < 6 ? 8 : 5);
    if (kind < 2) {
      number();
    } else if (kind == 2) {
      string();
    } else if (kind == 3) {
      constexpr std::string_view kWords[] = {"true", "false", "null"};
      text_ += kWords[below(std::size(kWords))];
    } else if (kind == 4) {
      text_ += std::to_string(std::uniform_int_distribution<std::int64_t>(
          std::numeric_limits<std::int64_t>::min())(random_));
    } else {
      collection(depth, kind != 5);
    }
    space();
  }

  void collection(unsigned depth, bool object) {
    text_ += object ? '{' : '[';
    const unsigned count = below(5);
    for (unsigned i = 0; i < count; ++i) {
      if (i > 0) text_ += ',';
      if (object) {
        space();
        string();
        space();
        text_ += ':';
      }
      value(depth + 1);
    }
    if (count == 0) space();
    text_ += object ? '}' : ']';
  }

  void digits(unsigned most) {
    for (unsigned i = below(most) + 1; i > 0; --i) text_ += static_cast<char>('0' + below(10));
  }

  void number() {
    if (below(2) == 0) text_ += '-';
    if (below(4) == 0) {
      text_ += '0';
    } else {
      text_ += static_cast<char>('1' + below(9));
      if (below(2) == 0) digits(21);
    }
    if (below(2) == 0) {
      text_ += '.';
      digits(20);
    }
    if (below(3) == 0) {
      constexpr std::string_view kForms[] = {"e", "E", "e+", "e-", "E-"};
      text_ += kForms[below(std::size(kForms))];
      digits(2);
    }
  }

  void string() {
    // Few names, so that members repeat; surrogate pairs, NUL, and text of two to four bytes.
    constexpr std::string_view kPieces[] = {"a",
                                            "b",
                                            "name",
                                            "\\n",
                                            "\\\"",
                                            "\\\\",
                                            "\\/",
                                            "\\u0000",
                                            "\\u00e9",
                                            "\\uD83D\\uDE00",
                                            "\\u4E2d",
                                            "\xc3\xa9",
                                            "\xe4\xb8\xad",
                                            "\xf0\x9f\x98\x80",
                                            "\x7f",
                                            "x y"};
    text_ += '"';
    for (unsigned i = below(4); i > 0; --i) text_ += kPieces[below(std::size(kPieces))];
    text_ += '"';
  }

  std::mt19937 random_;
  std::string text_;
};

}  // namespace

TEST(JsonReader, GivesWhatJsoncppGivesOnRandomDocuments) {
  RandomJson random(20240229);
  for (int i = 0; i < 20000; ++i) {
    const std::string text = random.document();
    expectSame(text);
    if (HasFailure()) return;
  }
}

TEST(JsonReader, NeverReadsMoreThanJsoncppOnDamagedDocuments) {
  RandomJson random(4711);
  std::mt19937 damage(4712);
  int refused = 0;
  for (int i = 0; i < 20000; ++i) {
    std::string text = random.document();
    const auto at = std::uniform_int_distribution<std::size_t>(0, text.size() - 1)(damage);
    text[at] = static_cast<char>(damage());
    Json::Value expected;
    const bool byJsoncpp = readByJsoncpp(text, expected);
    const Answer answer = read(text);
    refused += answer.outcome == JsonOutcome::Refused ? 1 : 0;
    if (answer.outcome == JsonOutcome::Refused) continue;
    ASSERT_TRUE(byJsoncpp) << text;
    ASSERT_TRUE(same(answer.value, expected)) << text;
  }
  EXPECT_GT(refused, 5000);
}
