#include "command_line.h"

#include <CLI/CLI.hpp>

#include <cstdlib>
#include <map>
#include <memory>
#include <sstream>
#include <utility>
#include <vector>

#include "display_text.h"
#include "exit_status.h"
#include "manual.h"

namespace ormaagent {

namespace {

constexpr char kDescription[] =
    "Queries a telecommunications network through the plug-in ii_ormaiac_emf.";

// One command line being read. CLI11 keeps pointers into it.
class Reader {
 public:
  Reader();
  ParsedCommandLine read(int argc, const char* const* argv);

 private:
  // Where a command's words go: the group, made at its first command, and the last word.
  CLI::App* addCommand(const std::string& path, const std::string& help);
  void addQuery(const Command& command);
  void addParameter(CLI::App& sub, const Parameter& parameter, int i);
  void addOption(CLI::App& sub, const Option& option, int i);
  Arguments argumentsOf(const Command& command) const;
  CLI::App* addHostCommand(const std::string& path, const std::string& help, Action action);
  void addServe();

  std::string unknownWords() const;

  CLI::App app_{kDescription, "ormaagent"};
  std::map<std::string, CLI::App*> groups_;
  Invocation invocation_;
  std::string format_ = "table";
  int logLevel_ = 0;
  int timeoutSeconds_ = 0;
  bool checkOnly_ = false;
  // Of the one command that is given.
  CLI::App* selected_ = nullptr;
  std::string values_[Command::kMaxParameters];
  std::vector<std::string> rest_;  // of a parameter that takes the rest of the words
  std::string optionValues_[Command::kMaxOptions];
  std::vector<std::string> repeatedValues_[Command::kMaxOptions];
};

std::string defaultConfigFile() {
  const char* fromEnvironment = std::getenv("ORMAAGENT_CONFIG");
  return fromEnvironment != nullptr && *fromEnvironment != '\0' ? fromEnvironment
                                                                : "./ormaagent.json";
}

struct FormatWord {
  const char* word;
  Format format;
};

constexpr FormatWord kFormats[] = {
    {"table", Format::kTable}, {"json", Format::kJson}, {"csv", Format::kCsv}};

std::optional<Format> findFormat(const std::string& word) {
  for (const FormatWord& row : kFormats) {
    if (word == row.word) return row.format;
  }
  return std::nullopt;
}

bool takesTheRest(const Parameter& parameter) {
  return parameter.presence == Presence::kOneOrMore || parameter.presence == Presence::kAnyNumber;
}

// Which of several words is meant. A value for the database may be a secret.
std::string given(ArgumentType type, const std::string& text) {
  constexpr std::size_t kMostBytes = 60;
  if (text.empty() || type == ArgumentType::kSqlValue) return "";
  const std::string shown = displayText(text.substr(0, kMostBytes), CharacterSet::kUtf8).bytes;
  return ", not \"" + shown + (text.size() > kMostBytes ? "…\"" : "\"");
}

CLI::Validator validatorOf(ArgumentType type) {
  return CLI::Validator(
      [type](std::string& text) -> std::string {
        return accepts(type, text) ? ""
                                   : "must be " + std::string(describe(type)) + given(type, text);
      },
      "");
}

Reader::Reader() {
  invocation_.configFile = defaultConfigFile();
  app_.set_version_flag("--version", "ormaagent " EMF_VERSION);
  app_.require_subcommand(1);
  app_.add_option("--config", invocation_.configFile,
                  "Configuration file (default: $ORMAAGENT_CONFIG, else ./ormaagent.json)")
      ->type_name("FILE");
  app_.add_option("--format", format_, "Form of the answer: table, json or csv [table]")
      ->check(CLI::Validator(
          [](std::string& word) { return findFormat(word) ? "" : "must be table, json or csv"; },
          ""))
      ->type_name("FORMAT");
  app_.add_option("--log-level", logLevel_, "Highest level that is logged; overrides log.level")
      ->check(CLI::Range(0, 9).description(""))
      ->type_name("N");
  app_.add_option("--timeout", timeoutSeconds_,
                  "Longest time for the whole command [600, and --wait on top]; serve: to start, "
                  "and again to stop")
      ->check(CLI::Range(1, 86400).description(""))
      ->type_name("SECONDS");
  for (const Command& command : commands()) addQuery(command);
  addServe();
  addHostCommand("config check", "Check the configuration file; no service is started",
                 Action::kCheckConfiguration);
  usage::addGenerator(app_, {{"man", [this] { return usage::manPage(app_, manual()); }},
                             {"configuration-man", configurationPage},
                             {"bash", [this] { return usage::bashCompletion(app_, manual()); }}});
  app_.footer(usage::helpFooter(manual()));  // last: commands inherit what stands before them
}

CLI::App* Reader::addCommand(const std::string& path, const std::string& help) {
  const auto blank = path.find(' ');
  CLI::App* parent = &app_;
  if (blank != std::string::npos) {
    CLI::App*& group = groups_[path.substr(0, blank)];
    if (group == nullptr) {
      group = app_.add_subcommand(path.substr(0, blank));
      for (const CommandGroup& row : commandGroups()) {
        if (group->get_name() == row.name) group->description(row.help);
      }
      group->require_subcommand(1)->fallthrough();
    }
    parent = group;
  }
  const std::string word = blank == std::string::npos ? path : path.substr(blank + 1);
  return parent->add_subcommand(word, help)->fallthrough();
}

void Reader::addQuery(const Command& command) {
  CLI::App* sub = addCommand(command.path, command.help);
  sub->footer("Example: ormaagent " + std::string(command.path) +
              (*command.example == '\0' ? "" : " ") + command.example);
  for (int i = 0; i < Command::kMaxParameters && command.parameters[i].name != nullptr; ++i) {
    addParameter(*sub, command.parameters[i], i);
  }
  for (int i = 0; i < Command::kMaxOptions && command.options[i].name != nullptr; ++i) {
    addOption(*sub, command.options[i], i);
  }
  sub->callback([this, sub, &command] {
    selected_ = sub;
    invocation_.action = Action::kQuery;
    invocation_.command = &command;
  });
}

void Reader::addParameter(CLI::App& sub, const Parameter& parameter, int i) {
  CLI::Option* const added = takesTheRest(parameter)
                                 ? sub.add_option(parameter.name, rest_, parameter.help)
                                 : sub.add_option(parameter.name, values_[i], parameter.help);
  added
      ->required(parameter.presence == Presence::kRequired ||
                 parameter.presence == Presence::kOneOrMore)
      ->check(validatorOf(parameter.type))
      ->type_name("");
}

void Reader::addOption(CLI::App& sub, const Option& option, int i) {
  if (option.repeated) {
    sub.add_option(option.name, repeatedValues_[i], option.help)
        ->allow_extra_args(false)  // one value each time
        ->check(validatorOf(option.type))
        ->type_name(option.value);
    return;
  }
  const bool required = option.defaultValue == nullptr;
  const std::string help =
      option.help + (required ? "" : " [" + std::string(option.defaultValue) + "]");
  sub.add_option(option.name, optionValues_[i], help)
      ->required(required)
      ->check(validatorOf(option.type))
      ->type_name(option.value);
}

// An option that was not given holds nothing: no type of an option takes an empty text.
Arguments Reader::argumentsOf(const Command& command) const {
  std::vector<std::string> texts;
  for (int i = 0; i < Command::kMaxParameters && command.parameters[i].name != nullptr; ++i) {
    const Parameter& parameter = command.parameters[i];
    if (!takesTheRest(parameter) && selected_->count(parameter.name) > 0)
      texts.push_back(values_[i]);
  }
  texts.insert(texts.end(), rest_.begin(), rest_.end());
  Arguments::Options options;
  Arguments::RepeatedOptions repeated;
  for (int i = 0; i < Command::kMaxOptions && command.options[i].name != nullptr; ++i) {
    const Option& option = command.options[i];
    if (option.repeated) {
      repeated[option.name] = repeatedValues_[i];
    } else {
      options[option.name] = optionValues_[i].empty() ? option.defaultValue : optionValues_[i];
    }
  }
  return Arguments(std::move(texts), std::move(options), std::move(repeated));
}

CLI::App* Reader::addHostCommand(const std::string& path, const std::string& help, Action action) {
  CLI::App* const command = addCommand(path, help);
  command->callback([this, action] { invocation_.action = action; });
  return command;
}

void Reader::addServe() {
  CLI::App* const serve =
      addHostCommand("serve", "Keep the services loaded until SIGINT or SIGTERM", Action::kServe);
  serve->add_flag("--check", checkOnly_, "The same as 'config check'");
  serve->callback(
      [this] { invocation_.action = checkOnly_ ? Action::kCheckConfiguration : Action::kServe; });
}

// CLI11 only says that a command is missing where a wrong one was given.
std::string Reader::unknownWords() const {
  std::string words;
  for (const std::string& word : app_.remaining(true)) words += " " + word;
  return words.empty() ? "" : "not known:" + words + "\n";
}

ParsedCommandLine Reader::read(int argc, const char* const* argv) {
  try {
    app_.parse(argc, argv);
  } catch (const CLI::ParseError& stop) {
    std::ostringstream answer;
    std::ostringstream message;
    const bool missing = dynamic_cast<const CLI::RequiredError*>(&stop) != nullptr;
    if (missing) message << unknownWords();
    const bool asked = app_.exit(stop, answer, message) == 0;
    return Finished{asked ? kExitSucceeded : kExitUsage, answer.str(), message.str()};
  }
  invocation_.format = *findFormat(format_);
  if (app_.count("--log-level") > 0) invocation_.logLevel = logLevel_;
  if (app_.count("--timeout") > 0) invocation_.timeout = std::chrono::seconds(timeoutSeconds_);
  if (invocation_.command != nullptr) invocation_.arguments = argumentsOf(*invocation_.command);
  return invocation_;
}

}  // namespace

std::vector<std::string> formatWords() {
  std::vector<std::string> words;
  for (const FormatWord& row : kFormats) words.emplace_back(row.word);
  return words;
}

ParsedCommandLine parseCommandLine(int argc, const char* const* argv) {
  return Reader().read(argc, argv);
}

}  // namespace ormaagent
