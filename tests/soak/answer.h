// What an operation answered, what it should have answered, and whether the two agree.
//
//   Expected expected(0, devices);                       // result 0 and exactly these rows
//   expected.orElse("result 0", Part::kNothing);         // or, where a fault met it, nothing
//   Verdict verdict = judge(answer, expected);
//
// Thread-safety: thread-compatible; shared rows are never changed. Nothing fails.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace soak {

// A record as text, its fields with "|" between them.
using Rows = std::vector<std::string>;
using SharedRows = std::shared_ptr<const Rows>;

struct Answer {
  std::int64_t result = 0;
  std::string thrown;  // the type of what left the operation; empty when it returned
  Rows rows;

  // "result 0" or "Json::LogicError".
  std::string how() const;
};

// How much of the complete answer a fault may leave.
enum class Part {
  kNothing,
  kBeginning,  // some first rows
  kSome,       // some rows, in their order
};

class Expected {
 public:
  Expected(std::int64_t result, SharedRows rows) : result_(result), rows_(std::move(rows)) {}
  Expected(std::int64_t result, Rows rows)
      : Expected(result, std::make_shared<const Rows>(std::move(rows))) {}

  // A fault may also end the operation like this, and leave that much.
  Expected& orElse(std::string how, Part part);
  // The rows that a fault leaves a part of, where they are not the complete ones.
  Expected& partsOf(SharedRows rows);
  // A member of an answer that was given another type, which no count of failed exchanges shows.
  Expected& orSpoilt(Part part);

 private:
  friend struct Judgement;

  struct Failure {
    std::string how;
    Part part;
    bool counted;  // by the exchanges that failed
  };

  std::int64_t result_;
  SharedRows rows_;
  SharedRows parts_;
  std::vector<Failure> failures_;
};

struct Verdict {
  enum Kind { kRight, kFailed, kWrong };
  Kind kind = kRight;
  std::string difference;  // of a wrong answer
};

// `exchangeFailed` says whether any exchange with an outside service failed meanwhile: without one
// an answer has to be right.
Verdict judge(const Answer& answer, const Expected& expected, bool exchangeFailed);

Verdict wrong(std::string difference);

}  // namespace soak
