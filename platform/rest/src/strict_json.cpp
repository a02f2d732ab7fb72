#include "strict_json.h"

#include <simdjson.h>

namespace orma::rest {
namespace {

class Scanner {
 public:
  Scanner(std::string_view text, std::size_t maxNesting) : text_(text), maxNesting_(maxNesting) {}

  // The reason to refuse the text; empty when there is none.
  std::string scan() {
    std::size_t depth = 0;
    while (!atEnd()) {
      const char c = text_[at_];
      if (c == '"') {
        if (!passString()) return "control character in a text at byte " + std::to_string(at_);
      } else if (c == '-' || isDigit()) {
        if (!passNumber()) return "malformed number at byte " + std::to_string(at_);
      } else {
        if ((c == '[' || c == '{') && ++depth > maxNesting_) return tooDeepReason(maxNesting_);
        if ((c == ']' || c == '}') && depth > 0) --depth;
        if (!belongsBetween(c)) return "stray character at byte " + std::to_string(at_);
        ++at_;
      }
    }
    return std::string();
  }

 private:
  static bool belongsBetween(char c) {
    // White space, structure, and the letters of true, false and null.
    return std::string_view(" \t\r\n[]{}:,truefalsn").find(c) != std::string_view::npos;
  }
  bool atEnd() const { return at_ >= text_.size(); }
  bool isDigit() const { return !atEnd() && text_[at_] >= '0' && text_[at_] <= '9'; }
  bool take(std::string_view anyOf) {
    if (atEnd() || anyOf.find(text_[at_]) == std::string_view::npos) return false;
    ++at_;
    return true;
  }
  bool passDigits() {
    if (!isDigit()) return false;
    while (isDigit()) ++at_;
    return true;
  }

  bool passString() {
    for (++at_; !atEnd() && text_[at_] != '"'; ++at_) {
      if (static_cast<unsigned char>(text_[at_]) < 0x20) return false;
      if (text_[at_] == '\\') ++at_;
    }
    ++at_;
    return true;
  }

  bool passNumber() {
    take("-");
    const bool leadingZero = take("0");
    if (leadingZero ? isDigit() : !passDigits()) return false;
    if (take(".") && !passDigits()) return false;
    if (take("eE")) {
      take("+-");
      return passDigits();
    }
    return true;
  }

  std::string_view text_;
  std::size_t maxNesting_;
  std::size_t at_ = 0;
};

}  // namespace

bool checkStrictJson(std::string_view text, std::size_t maxNesting, std::string& reason) {
  reason = Scanner(text, maxNesting).scan();
  return reason.empty();
}

std::string tooDeepReason(std::size_t maxNesting) {
  return "nested deeper than " + std::to_string(maxNesting) + " levels (rest.maxNesting)";
}

bool isValidUtf8(std::string_view text) {
  return simdjson::validate_utf8(text.data(), text.size());
}

}  // namespace orma::rest
