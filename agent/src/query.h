// One command of the table, run against the services.
//
// Thread-safety: belongs to the main thread. Failure is the exit status, told on standard error.
#pragma once

#include "answer_output.h"
#include "command_line.h"
#include "service_host.h"

namespace ormaagent {

// Starts the services, calls the operation, writes its answer, stops the services.
int runQuery(const Invocation& invocation, ServiceHost& host, AnswerOutput& output);

// The answer in the format that was asked for. False, and told, when it could not be written.
bool writeAnswer(const Answer& answer, Format format, AnswerOutput& output);

}  // namespace ormaagent
