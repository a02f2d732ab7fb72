// The command config check: every problem of a configuration file, as records.
//
// Thread-safety: thread-safe.
#pragma once

#include "answer_output.h"
#include "command_line.h"

namespace ormaagent {

// The answer's result is the number of problems. Starts nothing. Gives the exit status.
int checkConfiguration(const Invocation& invocation, AnswerOutput& output);

}  // namespace ormaagent
