// Messages for people, on standard error: one line each, whatever they hold.
//
//   tell("the configuration has 2 problems");  // ormaagent: the configuration has 2 problems
//
// Thread-safety: thread-safe. Nothing fails: a message that cannot be written is dropped.
#pragma once

#include <string_view>

namespace ormaagent {

// In the journal it counts as an error.
void tell(std::string_view text);

// The same for what is no failure.
void tellNotice(std::string_view text);

// Without the program's name: a line that others wait for or that belongs to the answer above it.
void tellLine(std::string_view text);

// A text of several lines.
void tellLines(std::string_view text);

}  // namespace ormaagent
