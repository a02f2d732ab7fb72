// Manual page, completion for bash and the end of --help of a program, out of the command line that
// it parses (CLI11) and the little that a command line does not say.
//
//   const usage::Manual manual{"queries a network", {}, {{"0", "done"}}};
//   app.footer(usage::helpFooter(manual));
//   usage::addGenerator(app, {{"man", [&] { return usage::manPage(app, manual); }}});
//
// Hidden options and commands (those of the empty group) are left out. Thread-safety:
// thread-compatible. Nothing fails but for memory.
#pragma once

#include <CLI/CLI.hpp>

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace usage {

// A word and what it means.
struct Entry {
  std::string word;
  std::string meaning;
};

struct Manual {
  std::string summary;                   // for the line behind the name, without full stop
  std::vector<std::string> description;  // paragraphs, after the program's own description
  std::vector<Entry> exitStatus;
  std::vector<std::string> examples;  // whole command lines
  std::vector<std::string> hints;     // sentences at the end of --help
  std::vector<Entry> environment;
  std::vector<Entry> files;
  std::vector<std::string> seeAlso;  // "ormasim(1)"
  // Options whose value is one of some words, by name ("--format").
  std::map<std::string, std::vector<std::string>> words;
};

// Examples, exit status and hints, as they stand below the options in --help.
std::string helpFooter(const Manual& manual);

// A page of section 1, in the macros of man(7).
std::string manPage(const CLI::App& app, const Manual& manual);

// A script that bash-completion loads by the program's name. A value is completed as a file where
// the command line calls it FILE, and as a word where the manual lists its words.
std::string bashCompletion(const CLI::App& app, const Manual& manual);

using Generators = std::map<std::string, std::function<std::string()>>;

// A hidden option --generate WORD: parsing it ends like --help does, with what the generator of
// that word gives.
void addGenerator(CLI::App& app, Generators generators);

}  // namespace usage
