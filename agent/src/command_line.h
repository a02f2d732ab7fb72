// The command line of ormaagent, built from the command table.
//
//   ParsedCommandLine parsed = parseCommandLine(argc, argv);
//   if (auto* done = std::get_if<Finished>(&parsed)) return done->status;
//   const Invocation& invocation = std::get<Invocation>(parsed);
//
// Thread-safety: thread-safe. Wrong usage comes back as a Finished with status 2.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "answer_format.h"
#include "command.h"

namespace ormaagent {

enum class Action { kQuery, kServe, kCheckConfiguration };

struct Invocation {
  Action action = Action::kQuery;
  const Command* command = nullptr;  // kQuery: the row
  Arguments arguments{{}};
  std::string configFile;  // as given, else from the environment, else ./ormaagent.json
  Format format = Format::kTable;
  std::optional<int> logLevel;
  std::optional<std::chrono::seconds> timeout;  // for the whole command
};

// The command line asked for help or the version, or was wrong: nothing is left to run.
struct Finished {
  int status = 0;
  std::string answer;   // for standard output
  std::string message;  // for standard error
};

using ParsedCommandLine = std::variant<Invocation, Finished>;

// What --format takes.
std::vector<std::string> formatWords();

// Reads the environment variable ORMAAGENT_CONFIG as well.
ParsedCommandLine parseCommandLine(int argc, const char* const* argv);

}  // namespace ormaagent
