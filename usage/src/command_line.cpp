#include "command_line.h"

namespace usage {

namespace {

template <class Named>
bool shows(const Named* named) {
  return !named->get_group().empty();
}

std::vector<const CLI::Option*> optionsOf(const CLI::App& app, bool positional) {
  std::vector<const CLI::Option*> found;
  for (const CLI::Option* option : app.get_options()) {
    if (shows(option) && option->get_positional() == positional) found.push_back(option);
  }
  return found;
}

// CLI11 writes the checks of a value behind the name of its type, each after a colon.
std::string::size_type colonOf(const std::string& type) { return type.find(':'); }

}  // namespace

std::vector<const CLI::App*> subcommands(const CLI::App& app) {
  std::vector<const CLI::App*> found;
  for (const CLI::App* sub : app.get_subcommands({})) {
    if (shows(sub)) found.push_back(sub);
  }
  return found;
}

std::vector<const CLI::Option*> namedOptions(const CLI::App& app) { return optionsOf(app, false); }

std::vector<const CLI::Option*> positionals(const CLI::App& app) { return optionsOf(app, true); }

std::vector<std::string> namesOf(const CLI::Option& option) {
  std::vector<std::string> names;
  for (const std::string& name : option.get_snames()) names.push_back("-" + name);
  for (const std::string& name : option.get_lnames()) names.push_back("--" + name);
  return names;
}

bool takesValue(const CLI::Option& option) { return option.get_items_expected_max() > 0; }

bool repeats(const CLI::Option& option) { return option.get_items_expected_max() > 1; }

std::string valueName(const CLI::Option& option) {
  if (!takesValue(option)) return "";
  const std::string type = option.get_type_name();
  return type.substr(0, colonOf(type));
}

std::string valueCheck(const CLI::Option& option) {
  const std::string type = option.get_type_name();
  const auto colon = colonOf(type);
  return !takesValue(option) || colon == std::string::npos ? "" : type.substr(colon + 1);
}

}  // namespace usage
