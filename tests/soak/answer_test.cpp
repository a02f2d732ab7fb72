// The judge of the soak: what it lets pass and what not.
#include "answer.h"

#include <gmock/gmock.h>

namespace soak {
namespace {

using testing::HasSubstr;

Answer answer(std::int64_t result, Rows rows) { return {result, "", std::move(rows)}; }

Expected threeRows() {
  Expected expected(0, Rows{"a", "b", "c"});
  expected.orElse("result 7", Part::kBeginning).orElse("result 8", Part::kSome);
  return expected;
}

Verdict::Kind kindOf(const Answer& given, bool exchangeFailed = true) {
  return judge(given, threeRows(), exchangeFailed).kind;
}

TEST(Judge, CompleteAnswerIsRightWhetherOrNotAnExchangeFailed) {
  EXPECT_EQ(kindOf(answer(0, {"a", "b", "c"}), false), Verdict::kRight);
  EXPECT_EQ(kindOf(answer(0, {"a", "b", "c"}), true), Verdict::kRight);
}

TEST(Judge, MissingFurtherOtherAndExchangedRowsAreWrong) {
  for (const Rows& rows : {Rows{"a", "b"}, Rows{"a", "b", "c", "c"}, Rows{"a", "x", "c"},
                           Rows{"b", "a", "c"}, Rows{}}) {
    EXPECT_EQ(kindOf(answer(0, rows)), Verdict::kWrong);
  }
}

TEST(Judge, FailureLeavesThePartThatItMayLeave) {
  EXPECT_EQ(kindOf(answer(7, {"a"})), Verdict::kFailed);
  EXPECT_EQ(kindOf(answer(7, {})), Verdict::kFailed);
  EXPECT_EQ(kindOf(answer(7, {"a", "c"})), Verdict::kWrong);
  EXPECT_EQ(kindOf(answer(8, {"a", "c"})), Verdict::kFailed);
  EXPECT_EQ(kindOf(answer(8, {"c", "a"})), Verdict::kWrong);
  EXPECT_EQ(kindOf(answer(8, {"x"})), Verdict::kWrong);
}

TEST(Judge, OtherResultsAndExceptionsAreWrong) {
  EXPECT_EQ(kindOf(answer(9, {"a", "b", "c"})), Verdict::kWrong);
  EXPECT_EQ(kindOf({0, "Json::LogicError", {}}), Verdict::kWrong);
}

TEST(Judge, FailureWithoutAFailedExchangeIsWrong) {
  const Verdict verdict = judge(answer(7, {"a"}), threeRows(), false);
  EXPECT_EQ(verdict.kind, Verdict::kWrong);
  EXPECT_THAT(verdict.difference, HasSubstr("no exchange had failed"));
}

TEST(Judge, SpoiltAnswerNeedsNoFailedExchange) {
  Expected expected(0, Rows{"a", "b"});
  expected.orSpoilt(Part::kBeginning);
  EXPECT_EQ(judge({0, "Json::LogicError", {"a"}}, expected, false).kind, Verdict::kFailed);
  EXPECT_EQ(judge({0, "Json::LogicError", {"b"}}, expected, false).kind, Verdict::kWrong);
}

TEST(Judge, PartsMayBeOfOtherRowsThanTheCompleteAnswer) {
  Expected expected(0, Rows{"first", "a"});
  expected.partsOf(std::make_shared<const Rows>(Rows{"a"})).orElse("result 1", Part::kBeginning);
  EXPECT_EQ(judge(answer(1, {"a"}), expected, true).kind, Verdict::kFailed);
  EXPECT_EQ(judge(answer(1, {"first"}), expected, true).kind, Verdict::kWrong);
}

TEST(Judge, DifferenceNamesTheFirstRowThatDiffers) {
  EXPECT_EQ(judge(answer(0, {"a", "x", "c"}), threeRows(), true).difference,
            "expected result 0 with 3 rows, got result 0 with 3; row 1: expected \"b\", got "
            "\"x\"");
}

}  // namespace
}  // namespace soak
