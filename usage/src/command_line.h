// A command line as the documents see it: its commands and options without the hidden ones.
//
// Thread-safety: thread-compatible. Everything borrows from the CLI::App.
#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace usage {

std::vector<const CLI::App*> subcommands(const CLI::App& app);
// Options with a name that begins with a hyphen, and the others.
std::vector<const CLI::Option*> namedOptions(const CLI::App& app);
std::vector<const CLI::Option*> positionals(const CLI::App& app);

// "-h" and "--help"; a positional has none.
std::vector<std::string> namesOf(const CLI::Option& option);
bool takesValue(const CLI::Option& option);
bool repeats(const CLI::Option& option);
// "FILE", and what a check says about it: "INT in [0 - 65535]"; either may be empty.
std::string valueName(const CLI::Option& option);
std::string valueCheck(const CLI::Option& option);

}  // namespace usage
