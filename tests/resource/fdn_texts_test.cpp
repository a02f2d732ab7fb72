#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "resourcenames.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

using Segments = std::map<std::string, std::string>;

Segments parse(const std::string& fdn) {
  Segments segments;
  ParseFdnSegments(segments, fdn);
  return segments;
}

TEST(MakeNeFdnTest, IsTheDecimalId) {
  EXPECT_EQ(MakeNeFdn(0), "NE=0");
  EXPECT_EQ(MakeNeFdn(12), "NE=12");
  EXPECT_EQ(MakeNeFdn(-1), "NE=-1");
  EXPECT_EQ(MakeNeFdn(std::numeric_limits<std::int64_t>::max()), "NE=9223372036854775807");
  EXPECT_EQ(MakeNeFdn(std::numeric_limits<std::int64_t>::min()), "NE=-9223372036854775808");
}

TEST(ParseFdnSegmentsTest, EverySegmentIsAnEntry) {
  EXPECT_THAT(parse("NE=1,FR=2,S=3"),
              ElementsAre(Pair("FR", "2"), Pair("NE", "1"), Pair("S", "3")));
}

TEST(ParseFdnSegmentsTest, TextWithoutCommaIsOneSegment) {
  EXPECT_THAT(parse("NE=1"), ElementsAre(Pair("NE", "1")));
  EXPECT_THAT(parse("NE=1=2"), ElementsAre(Pair("NE", "1=2")));
  EXPECT_THAT(parse("="), ElementsAre(Pair("", "")));
  EXPECT_THAT(parse("=v"), ElementsAre(Pair("", "v")));
  EXPECT_THAT(parse("NE="), ElementsAre(Pair("NE", "")));
}

TEST(ParseFdnSegmentsTest, TextWithoutEqualsHoldsNothing) {
  EXPECT_THAT(parse(""), IsEmpty());
  EXPECT_THAT(parse("NE"), IsEmpty());
  EXPECT_THAT(parse("NE,FR"), IsEmpty());
  EXPECT_THAT(parse(","), IsEmpty());
  EXPECT_THAT(parse(",,,"), IsEmpty());
}

TEST(ParseFdnSegmentsTest, LastValueOfAKeyWins) {
  EXPECT_THAT(parse("NE=1,NE=2"), ElementsAre(Pair("NE", "2")));
  EXPECT_THAT(parse("NE=1,NE=2,NE=3"), ElementsAre(Pair("NE", "3")));
}

TEST(ParseFdnSegmentsTest, PieceWithoutEqualsIsSkipped) {
  EXPECT_THAT(parse("NE=1,FR,S=3"), ElementsAre(Pair("NE", "1"), Pair("S", "3")));
  EXPECT_THAT(parse("NE,FR=2"), ElementsAre(Pair("FR", "2")));
  EXPECT_THAT(parse("NE=1,FR"), ElementsAre(Pair("NE", "1")));
  EXPECT_THAT(parse("NE=1,"), ElementsAre(Pair("NE", "1")));
  EXPECT_THAT(parse(",NE=1"), ElementsAre(Pair("NE", "1")));
}

TEST(ParseFdnSegmentsTest, BlanksAreKept) {
  EXPECT_THAT(parse(" NE = 1 , FR=2"), ElementsAre(Pair(" FR", "2"), Pair(" NE ", " 1 ")));
}

TEST(ParseFdnSegmentsTest, EntriesAreAddedToTheMap) {
  Segments segments = {{"NE", "9"}, {"PP", "4"}};
  ParseFdnSegments(segments, "NE=1,FR=2");
  EXPECT_THAT(segments, ElementsAre(Pair("FR", "2"), Pair("NE", "1"), Pair("PP", "4")));
}

TEST(TrimBlanksTest, RemovesSpacesAtBothEndsOnly) {
  const std::tuple<const char*, const char*, bool> kCases[] = {
      {"", "", false},          {" ", "", false},       {"    ", "", false},
      {"a", "a", true},         {" a", "a", true},      {"a ", "a", true},
      {"  a b  ", "a b", true}, {"\t a", "\t a", true}, {"a \n", "a \n", true},
      {" \t ", "\t", true},
  };
  for (const auto& [text, expected, remains] : kCases) {
    std::string trimmed = text;
    EXPECT_EQ(TrimBlanks(trimmed), remains) << '"' << text << '"';
    EXPECT_EQ(trimmed, expected) << '"' << text << '"';
  }
}

struct Split {
  bool result;
  std::vector<std::string> pieces;
};

Split split(const std::string& text, char separator) {
  Split done;
  done.result = SplitFdnList(text, done.pieces, separator);
  return done;
}

MATCHER_P2(Gives, result, pieces, "") {
  return arg.result == result && ::testing::ExplainMatchResult(pieces, arg.pieces, result_listener);
}

TEST(SplitFdnListTest, CutsAtEachSeparatorAndTrims) {
  EXPECT_THAT(split("a - b", '-'), Gives(true, ElementsAre("a", "b")));
  EXPECT_THAT(split("a", '-'), Gives(true, ElementsAre("a")));
  EXPECT_THAT(split(" NE=1 ; NE=2;NE=3 ", ';'), Gives(true, ElementsAre("NE=1", "NE=2", "NE=3")));
  EXPECT_THAT(split("a-b", ';'), Gives(true, ElementsAre("a-b")));
}

TEST(SplitFdnListTest, EmptyListGivesFalseAndNothing) {
  EXPECT_THAT(split("", '-'), Gives(false, IsEmpty()));
  EXPECT_THAT(split("", ';'), Gives(false, IsEmpty()));
}

TEST(SplitFdnListTest, EmptyPieceStopsTheWalk) {
  EXPECT_THAT(split("a--b", '-'), Gives(false, ElementsAre("a")));
  EXPECT_THAT(split("a- -b", '-'), Gives(false, ElementsAre("a")));
  EXPECT_THAT(split("-a", '-'), Gives(false, IsEmpty()));
  EXPECT_THAT(split("a-b-", '-'), Gives(false, ElementsAre("a", "b")));
  EXPECT_THAT(split("a-b- ", '-'), Gives(false, ElementsAre("a", "b")));
  EXPECT_THAT(split("-", '-'), Gives(false, IsEmpty()));
  EXPECT_THAT(split("   ", ';'), Gives(false, IsEmpty()));
}

TEST(SplitFdnListTest, ShelfIsNotCutAtHyphens) {
  EXPECT_THAT(split("a-shelf-b", '-'), Gives(true, ElementsAre("a-shelf-b")));
  EXPECT_THAT(split("  shelf--1 ", '-'), Gives(true, ElementsAre("shelf--1")));
  EXPECT_THAT(split("bookshelf-1", '-'), Gives(true, ElementsAre("bookshelf-1")));
  EXPECT_THAT(split("Shelf-1", '-'), Gives(true, ElementsAre("Shelf", "1")));
  EXPECT_THAT(split("shelf;1", ';'), Gives(true, ElementsAre("shelf", "1")));
}

TEST(SplitFdnListTest, PiecesAreAppended) {
  std::vector<std::string> pieces = {"before"};
  EXPECT_TRUE(SplitFdnList("a,b", pieces, ','));
  EXPECT_THAT(pieces, ElementsAre("before", "a", "b"));
}

}  // namespace
