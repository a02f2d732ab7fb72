#include "strict_json.h"

#include <json/reader.h>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <optional>
#include <sstream>
#include <string_view>

#include "orma/bundle/utf8.h"

namespace orma {

namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

std::size_t skipDigits(std::string_view token, std::size_t at) {
  while (at < token.size() && isDigit(token[at])) ++at;
  return at;
}

bool isJsonNumber(std::string_view token) {
  std::size_t at = token.front() == '-' ? 1 : 0;
  const std::size_t integerEnd = skipDigits(token, at);
  if (integerEnd == at || (token[at] == '0' && integerEnd > at + 1)) return false;
  at = integerEnd;
  if (at < token.size() && token[at] == '.') {
    const std::size_t end = skipDigits(token, ++at);
    if (end == at) return false;
    at = end;
  }
  if (at < token.size() && (token[at] == 'e' || token[at] == 'E')) {
    ++at;
    if (at < token.size() && (token[at] == '+' || token[at] == '-')) ++at;
    const std::size_t end = skipDigits(token, at);
    if (end == at) return false;
    at = end;
  }
  return at == token.size();
}

// What jsoncpp's strict mode lets through, or answers with an exception: comments before a member,
// loose numbers, raw control characters, broken UTF-8, deep nesting.
class LexicalCheck {
 public:
  explicit LexicalCheck(std::string_view text) : text_(text) {}

  // The first fault, or none; at() is then its offset.
  std::optional<std::string> run() {
    std::optional<std::string> fault;
    while (!fault && at_ < text_.size()) fault = token();
    return fault;
  }
  std::size_t at() const { return at_; }

 private:
  std::optional<std::string> token() {
    const char c = text_[at_];
    if (c == '"') return quoted();
    if (c == '-' || c == '+' || isDigit(c)) return number();
    if (c == '/') return "comments are not allowed";
    if ((c == '{' || c == '[') && ++depth_ > kMaxConfigurationNesting) {
      return "nested deeper than " + std::to_string(kMaxConfigurationNesting) + " levels";
    }
    if ((c == '}' || c == ']') && depth_ > 0) --depth_;
    ++at_;
    return std::nullopt;
  }

  std::optional<std::string> quoted() {
    for (++at_; at_ < text_.size();) {
      if (text_[at_] == '"') {
        ++at_;
        return std::nullopt;
      }
      if (static_cast<unsigned char>(text_[at_]) < 0x20) {
        return "a control character in a text must be escaped (line feed as \\n, tab as \\t)";
      }
      if (text_[at_] == '\\') {
        ++at_;
        if (at_ < text_.size() && (text_[at_] == '"' || text_[at_] == '\\')) ++at_;
        continue;
      }
      const std::size_t length = utf8SequenceLength(text_.substr(at_));
      if (length == 0) return "a text must be valid UTF-8";
      at_ += length;
    }
    return std::nullopt;  // jsoncpp reports the missing quote
  }

  std::optional<std::string> number() {
    const std::size_t end = std::min(text_.find_first_not_of("0123456789+-.eE", at_), text_.size());
    const std::string_view token = text_.substr(at_, end - at_);
    if (!isJsonNumber(token)) {
      return "\"" + std::string(token.substr(0, 40)) + "\" is not a JSON number";
    }
    at_ = end;
    return std::nullopt;
  }

  std::string_view text_;
  std::size_t at_ = 0;
  std::size_t depth_ = 0;
};

std::string position(const std::string& name, std::string_view text, std::size_t offset) {
  const std::string_view before = text.substr(0, offset);
  const auto line = 1 + std::count(before.begin(), before.end(), '\n');
  const auto lineStart = before.rfind('\n');
  const std::size_t column = lineStart == std::string_view::npos ? offset + 1 : offset - lineStart;
  return name + ":" + std::to_string(line) + ":" + std::to_string(column);
}

// jsoncpp's messages come as one text: "* Line 1, Column 5\n  message\n", again and again, with
// lines of further detail between.
void appendReaderProblems(const std::string& messages, const std::string& name,
                          std::vector<ConfigProblem>& problems) {
  std::istringstream lines(messages);
  std::string where;
  for (std::string line; std::getline(lines, line);) {
    unsigned row = 0;
    unsigned column = 0;
    if (std::sscanf(line.c_str(), "* Line %u, Column %u", &row, &column) == 2) {
      where = name + ":" + std::to_string(row) + ":" + std::to_string(column);
    } else if (line.rfind("  ", 0) == 0) {
      problems.push_back({where, line.substr(2)});
    }
  }
}

}  // namespace

bool parseStrictJson(const std::string& text, const std::string& name, Json::Value& document,
                     std::vector<ConfigProblem>& problems) {
  LexicalCheck check(text);
  if (const auto fault = check.run()) {
    problems.push_back({position(name, text, check.at()), *fault});
    return false;
  }
  Json::CharReaderBuilder builder;
  Json::CharReaderBuilder::strictMode(&builder.settings_);
  const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
  std::string messages;
  if (reader->parse(text.data(), text.data() + text.size(), &document, &messages)) return true;
  appendReaderProblems(messages, name, problems);
  return false;
}

}  // namespace orma
