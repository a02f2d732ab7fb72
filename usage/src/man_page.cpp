#include <algorithm>

#include "command_line.h"
#include "usage/manual.h"
#include "usage/roff.h"

namespace usage {

namespace {

// "--config FILE" as it stands in a synopsis or as the head of an entry.
std::string headOf(const CLI::Option& option) {
  std::string head;
  for (const std::string& name : namesOf(option)) {
    head += (head.empty() ? "" : ", ") + roffBold(name);
  }
  const std::string value = valueName(option);
  return value.empty() ? head : head + " " + roffItalic(value);
}

std::string inSynopsis(const CLI::Option& option) {
  std::string words = option.get_positional() ? roffItalic(option.get_name(true)) : headOf(option);
  if (option.get_positional() && repeats(option)) words += "...";
  return option.get_required() ? words : "[" + words + "]";
}

std::string meaningOf(const CLI::Option& option) {
  const std::string check = valueCheck(option);
  return option.get_description() + (check.empty() ? "" : " (" + check + ")");
}

using Options = std::vector<const CLI::Option*>;

// The command's own, --help apart: it stands once, among the program's.
Options ownOptions(const CLI::App& app) {
  Options options = namedOptions(app);
  const auto help = std::find(options.begin(), options.end(), app.get_help_ptr());
  if (help != options.end()) options.erase(help);
  return options;
}

void addOptions(Roff& page, const Options& options) {
  for (const CLI::Option* option : options) {
    const std::string head =
        option->get_positional() ? roffItalic(option->get_name(true)) : headOf(*option);
    page.rawEntry(head, meaningOf(*option));
  }
}

void addCommand(Roff& page, const CLI::App& app, const std::string& path) {
  Options options = positionals(app);
  for (const CLI::Option* option : ownOptions(app)) options.push_back(option);
  std::string head = roffBold(path);
  for (const CLI::Option* option : options) head += " " + inSynopsis(*option);
  page.rawEntry(head, app.get_description() + ".");
  if (!options.empty()) {
    page.indent();
    addOptions(page, options);
    page.outdent();
  }
  // Commands without one of their own have the program's.
  const bool inherited = app.get_parent()->get_footer() == app.get_footer();
  if (!app.get_footer().empty() && !inherited) page.continued(app.get_footer());
}

// A group's commands below its heading; commands that stand alone have none.
void addCommands(Roff& page, const CLI::App& app, const std::string& path) {
  for (const CLI::App* sub : subcommands(app)) {
    const std::string name = path.empty() ? sub->get_name() : path + " " + sub->get_name();
    if (subcommands(*sub).empty()) addCommand(page, *sub, name);
  }
  for (const CLI::App* sub : subcommands(app)) {
    if (subcommands(*sub).empty()) continue;
    page.subsection(sub->get_description());
    addCommands(page, *sub, path.empty() ? sub->get_name() : path + " " + sub->get_name());
  }
}

void addEntries(Roff& page, const char* title, const std::vector<Entry>& entries) {
  if (entries.empty()) return;
  page.section(title);
  for (const Entry& entry : entries) page.entry(entry.word, entry.meaning);
}

void addDescription(Roff& page, const CLI::App& app, const Manual& manual) {
  page.section("SYNOPSIS");
  page.raw(roffBold(app.get_name()) + " [" + roffItalic("OPTION") + "]... " +
           roffItalic("COMMAND") + " [" + roffItalic("ARGUMENT") + "]...");
  page.section("DESCRIPTION");
  page.paragraph(app.get_description());
  for (const std::string& words : manual.description) page.paragraph(words);
  page.section("OPTIONS");
  const CLI::Option* help = app.get_help_ptr();
  if (help != nullptr) page.rawEntry(headOf(*help), "Help, also for each command.");
  addOptions(page, ownOptions(app));
}

}  // namespace

std::string manPage(const CLI::App& app, const Manual& manual) {
  Roff page(app.get_name(), 1, manual.summary);
  addDescription(page, app, manual);
  page.section("COMMANDS");
  addCommands(page, app, "");
  addEntries(page, "EXIT STATUS", manual.exitStatus);
  addEntries(page, "ENVIRONMENT", manual.environment);
  addEntries(page, "FILES", manual.files);
  if (!manual.examples.empty()) {
    page.section("EXAMPLES");
    page.code(manual.examples);
  }
  if (!manual.seeAlso.empty()) {
    page.section("SEE ALSO");
    page.references(manual.seeAlso);
  }
  return page.text();
}

}  // namespace usage
