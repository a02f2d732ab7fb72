#include "message.h"

#include <unistd.h>

#include <algorithm>
#include <string>

#include "display_text.h"
#include "orma/bundle/configuration.h"
#include "orma/log/journal.h"

namespace ormaagent {

namespace {

CharacterSet agentCharacterSet() {
  return static_cast<CharacterSet>(
      orma::Configuration::current()->integer("text.characterSetSwitch"));
}

void writeLine(std::string_view prefix, std::string_view text) {
  std::string line(prefix);
  line += displayText(text, agentCharacterSet()).bytes + "\n";
  // In one piece, so that lines of the log do not come between.
  if (::write(STDERR_FILENO, line.data(), line.size()) < 0) return;
}

}  // namespace

void tell(std::string_view text) {
  writeLine(orma::standardErrorIsJournal() ? "<3>ormaagent: " : "ormaagent: ", text);
}

void tellNotice(std::string_view text) { writeLine("ormaagent: ", text); }

void tellLine(std::string_view text) { writeLine("", text); }

void tellLines(std::string_view text) {
  while (!text.empty()) {
    const auto end = std::min(text.find('\n'), text.size());
    tellLine(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
}

}  // namespace ormaagent
