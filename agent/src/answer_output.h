// The way out of an answer. Libraries of the process print to standard output when they like, so
// the program keeps a descriptor of its own for the answer and points descriptor 1 at standard
// error before anything else runs.
//
//   AnswerOutput output = AnswerOutput::takeStandardOutput();
//   if (!output.write(document)) report(output.failure());
//
// Thread-safety: thread-compatible. A reader that has gone away is no failure: the rest of the
// answer is dropped.
#pragma once

#include <string>
#include <string_view>

namespace ormaagent {

class AnswerOutput {
 public:
  // Takes the process's standard output. Also opens any of the descriptors 0 to 2 that is closed,
  // so that no file opened later takes its number; belongs to the start of main.
  static AnswerOutput takeStandardOutput();

  // Owns `descriptor`; a negative one stands for an output that was closed.
  explicit AnswerOutput(int descriptor) : descriptor_(descriptor) {}
  AnswerOutput(const AnswerOutput&) = delete;
  AnswerOutput& operator=(const AnswerOutput&) = delete;
  ~AnswerOutput();

  // True when everything was written or the reader is gone. Blocks.
  bool write(std::string_view bytes);
  // Why the last write failed, in words.
  const std::string& failure() const { return failure_; }

 private:
  bool fail(int error);

  int descriptor_;
  std::string failure_;
};

}  // namespace ormaagent
