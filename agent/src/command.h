// The commands of ormaagent: one row for each. The command line, the help, the formats and the
// exit statuses all come from the rows.
//
// Thread-safety: immutable.
#pragma once

#include <cstdint>
#include <vector>

#include "answer.h"
#include "arguments.h"

namespace ormaagent {

// What an operation's result says about its success.
enum class ResultRule { kZeroSucceeds, kOneIsFound, kNegativeFails };

bool succeeded(ResultRule rule, std::int64_t result);

enum class Presence {
  kRequired,
  kOptional,   // none of the parameters behind it is required
  kOneOrMore,  // the last parameter: takes the rest of the words
  kAnyNumber,  // the same, and there may be none
};

struct Parameter {
  const char* name;  // "ID", as the help shows it
  ArgumentType type;
  const char* help;
  Presence presence = Presence::kRequired;
};

// An option of one command.
struct Option {
  const char* name;   // "--wait"
  const char* value;  // "SECONDS", as the help shows it
  ArgumentType type;
  const char* help;
  const char* defaultValue = nullptr;  // null: the option is required, unless it is repeated
  bool repeated = false;               // may be given any number of times, or not at all
};

struct Command {
  // Calls the operation. Lets its exceptions pass.
  using Operation = Answer (*)(const Arguments&);

  static constexpr int kMaxParameters = 4;
  static constexpr int kMaxOptions = 3;

  const char* path;  // "topo device": group and word, or the word alone
  const char* help;
  const char* example;  // the arguments and options of an example
  ResultRule rule;
  Operation operation;
  Parameter parameters[kMaxParameters] = {};  // up to the first without a name
  // What a failure means where the result is no error number; null: the error number's text.
  const char* failureText = nullptr;
  // For people, when the operation succeeded without a record; may be null.
  const char* emptyHint = nullptr;
  Option options[kMaxOptions] = {};  // up to the first without a name
};

// Groups of commands and what they are about.
struct CommandGroup {
  const char* name;
  const char* help;
};

const std::vector<Command>& commands();
const std::vector<CommandGroup>& commandGroups();

}  // namespace ormaagent
