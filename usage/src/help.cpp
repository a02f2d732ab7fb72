#include <sstream>
#include <utility>

#include "usage/manual.h"

namespace usage {

namespace {

constexpr std::size_t kColumns = 80;

std::string wrapped(const std::string& words) {
  std::istringstream stream(words);
  std::string text;
  std::size_t column = 0;
  for (std::string word; stream >> word;) {
    const bool fits = column > 0 && column + 1 + word.size() <= kColumns;
    if (column > 0) text += fits ? ' ' : '\n';
    column = fits ? column + 1 + word.size() : word.size();
    text += word;
  }
  return text;
}

std::string joined(const std::vector<Entry>& entries) {
  std::string words;
  for (const Entry& entry : entries) {
    words += (words.empty() ? "" : ", ") + entry.word + " " + entry.meaning;
  }
  return words + ".";
}

}  // namespace

std::string helpFooter(const Manual& manual) {
  std::string footer = "Examples:\n";
  for (const std::string& example : manual.examples) footer += "  " + example + "\n";
  footer += "\n" + wrapped("Exit status: " + joined(manual.exitStatus));
  for (const std::string& hint : manual.hints) footer += "\n" + wrapped(hint);
  return footer;
}

void addGenerator(CLI::App& app, Generators generators) {
  const auto generate = [generators = std::move(generators)](const std::string& word) {
    const auto found = generators.find(word);
    if (found == generators.end()) {
      throw CLI::ValidationError("--generate", "there is no " + word);
    }
    // CLI11 ends the output of a version with a line feed of its own.
    std::string text = found->second();
    if (!text.empty() && text.back() == '\n') text.pop_back();
    throw CLI::CallForVersion(text, static_cast<int>(CLI::ExitCodes::Success));
  };
  app.add_option_function<std::string>("--generate", generate)->group("");
}

}  // namespace usage
