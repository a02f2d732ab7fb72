// ormaagent from the command line to the exit status.
//
// Thread-safety: belongs to main. Failure is the exit status (exit_status.h), told on standard
// error.
#pragma once

#include "answer_output.h"

namespace ormaagent {

int run(int argc, const char* const* argv, AnswerOutput& output);

}  // namespace ormaagent
