#include <set>

#include "command_line.h"
#include "usage/manual.h"

namespace usage {

namespace {

constexpr char kFile[] = "FILE";

// The script, but for the table of commands and that of words. @NAME@ is the program.
constexpr char kHead[] = R"sh(# Completion of @NAME@ for bash, made by '@NAME@ --generate bash'.

# The row of a command: what may follow it, and which of its options take a value, or a file.
_@NAME@_command() {
  commands='' options='' valued='' files='' arguments=''
  case $1 in
)sh";

constexpr char kBetween[] = R"sh(  esac
}

# The words that the value of an option may be.
_@NAME@_words() {
  case $1 in
)sh";

constexpr char kTail[] = R"sh(  esac
}

_@NAME@_files() {
  compopt -o filenames 2>/dev/null
  mapfile -t COMPREPLY < <(compgen -f -- "$1")
}

_@NAME@() {
  local current=${COMP_WORDS[COMP_CWORD]} path='' option='' only_arguments='' word i
  local commands options valued files arguments
  COMPREPLY=()
  _@NAME@_command ''
  for ((i = 1; i < COMP_CWORD; i++)); do
    word=${COMP_WORDS[i]}
    # An option that is waiting for its value; bash hands "--a=b" over as three words.
    if [[ -n $option ]]; then
      [[ $word == = ]] || option=
    elif [[ $word == -- ]]; then
      only_arguments=yes
    elif [[ -z $only_arguments && " $valued " == *" $word "* ]]; then
      option=$word
    elif [[ -z $only_arguments && " $commands " == *" $word "* ]]; then
      path="${path:+$path }$word"
      _@NAME@_command "$path"
    fi
  done
  [[ -n $option && $current == = ]] && current=
  if [[ -n $option && " $files " == *" $option "* ]]; then
    _@NAME@_files "$current"
  elif [[ -n $option ]]; then
    mapfile -t COMPREPLY < <(compgen -W "$(_@NAME@_words "$option")" -- "$current")
  elif [[ -z $only_arguments && $current == -* ]]; then
    mapfile -t COMPREPLY < <(compgen -W "$options" -- "$current")
  elif [[ $arguments == files ]]; then
    _@NAME@_files "$current"
  elif [[ -z $only_arguments ]]; then
    mapfile -t COMPREPLY < <(compgen -W "$commands" -- "$current")
  fi
}

complete -F _@NAME@ @NAME@
)sh";

std::string named(const std::string& text, const std::string& name) {
  constexpr char kMark[] = "@NAME@";
  std::string script;
  std::string::size_type begin = 0;
  for (auto mark = text.find(kMark); mark != std::string::npos; mark = text.find(kMark, begin)) {
    script += text.substr(begin, mark - begin) + name;
    begin = mark + sizeof kMark - 1;
  }
  return script + text.substr(begin);
}

std::string joined(const std::set<std::string>& words) {
  std::string text;
  for (const std::string& word : words) text += (text.empty() ? "" : " ") + word;
  return text;
}

// Options of the command, and those that it takes for the commands above it.
void collectOptions(const CLI::App& app, std::set<std::string>& options,
                    std::set<std::string>& valued, std::set<std::string>& files) {
  for (const CLI::Option* option : namedOptions(app)) {
    for (const std::string& name : namesOf(*option)) {
      options.insert(name);
      if (takesValue(*option)) valued.insert(name);
      if (valueName(*option) == kFile) files.insert(name);
    }
  }
  if (app.get_fallthrough() && app.get_parent() != nullptr) {
    collectOptions(*app.get_parent(), options, valued, files);
  }
}

bool takesFiles(const CLI::App& app) {
  for (const CLI::Option* option : positionals(app)) {
    if (valueName(*option) == kFile) return true;
  }
  return false;
}

void addRows(std::string& script, const CLI::App& app, const std::string& path) {
  std::set<std::string> commands;
  std::set<std::string> options;
  std::set<std::string> valued;
  std::set<std::string> files;
  for (const CLI::App* sub : subcommands(app)) commands.insert(sub->get_name());
  collectOptions(app, options, valued, files);
  script += "    '" + path + "')\n      commands='" + joined(commands) + "'\n      options='" +
            joined(options) + "'\n      valued='" + joined(valued) + "'\n      files='" +
            joined(files) + "'\n" + (takesFiles(app) ? "      arguments=files\n" : "") +
            "      ;;\n";
  for (const CLI::App* sub : subcommands(app)) {
    addRows(script, *sub, (path.empty() ? "" : path + " ") + sub->get_name());
  }
}

}  // namespace

std::string bashCompletion(const CLI::App& app, const Manual& manual) {
  std::string script = kHead;
  addRows(script, app, "");
  script += kBetween;
  for (const auto& [option, words] : manual.words) {
    const std::set<std::string> unique(words.begin(), words.end());
    script += "    " + option + ") echo '" + joined(unique) + "' ;;\n";
  }
  return named(script + kTail, app.get_name());
}

}  // namespace usage
