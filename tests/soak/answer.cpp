#include "answer.h"

#include <algorithm>

namespace soak {

namespace {

bool isPart(const Rows& rows, const Rows& whole, Part part) {
  if (part == Part::kNothing) return rows.empty();
  if (part == Part::kBeginning) {
    return rows.size() <= whole.size() && std::equal(rows.begin(), rows.end(), whole.begin());
  }
  auto place = whole.begin();
  for (const std::string& row : rows) {
    place = std::find(place, whole.end(), row);
    if (place == whole.end()) return false;
    ++place;
  }
  return true;
}

std::string rowAt(const Rows& rows, std::size_t index) {
  return index < rows.size() ? "\"" + rows[index] + "\"" : "nothing";
}

// The first row that differs.
std::string differenceOf(const Answer& answer, const std::string& how, const Rows& rows) {
  std::size_t first = 0;
  while (first < rows.size() && first < answer.rows.size() && rows[first] == answer.rows[first]) {
    ++first;
  }
  return "expected " + how + " with " + std::to_string(rows.size()) + " rows, got " + answer.how() +
         " with " + std::to_string(answer.rows.size()) + "; row " + std::to_string(first) +
         ": expected " + rowAt(rows, first) + ", got " + rowAt(answer.rows, first);
}

}  // namespace

std::string Answer::how() const {
  return thrown.empty() ? "result " + std::to_string(result) : thrown;
}

Expected& Expected::orElse(std::string how, Part part) {
  failures_.push_back({std::move(how), part, true});
  return *this;
}

Expected& Expected::partsOf(SharedRows rows) {
  parts_ = std::move(rows);
  return *this;
}

Expected& Expected::orSpoilt(Part part) {
  failures_.push_back({"Json::LogicError", part, false});
  return *this;
}

Verdict wrong(std::string difference) { return {Verdict::kWrong, std::move(difference)}; }

struct Judgement {
  static Verdict of(const Answer& answer, const Expected& expected, bool exchangeFailed) {
    const std::string right = "result " + std::to_string(expected.result_);
    const std::string how = answer.how();
    if (how == right && answer.rows == *expected.rows_) return {};
    const Rows& whole = expected.parts_ ? *expected.parts_ : *expected.rows_;
    bool documented = false;
    for (const Expected::Failure& failure : expected.failures_) {
      if (failure.how != how || !isPart(answer.rows, whole, failure.part)) continue;
      if (exchangeFailed || !failure.counted) return {Verdict::kFailed, ""};
      documented = true;
    }
    const std::string difference = differenceOf(answer, right, *expected.rows_);
    return wrong(documented ? "no exchange had failed: " + difference : difference);
  }
};

Verdict judge(const Answer& answer, const Expected& expected, bool exchangeFailed) {
  return Judgement::of(answer, expected, exchangeFailed);
}

}  // namespace soak
