#include "sql_value.h"

#include <cmath>
#include <cstdint>
#include <string>

#include "arguments.h"

namespace ormaagent {

namespace {

using Parsed = std::optional<refl::CValue>;

Parsed integerOf(std::string_view text) {
  const auto number = parseNumber<std::int64_t>(text);
  return number ? Parsed(refl::CValue(*number)) : std::nullopt;
}

Parsed realOf(std::string_view text) {
  double number = 0;
  const char* const end = text.data() + text.size();
  const auto [stopped, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || stopped != end || !std::isfinite(number)) return std::nullopt;
  return refl::CValue(number);
}

Parsed textOf(std::string_view text) { return refl::CValue(std::string(text)); }

Parsed bytesOf(std::string_view digits) {
  if (digits.size() % 2 != 0) return std::nullopt;
  refl::Bytes bytes;
  for (std::size_t i = 0; i < digits.size(); i += 2) {
    const auto byte = parseNumber<unsigned char>(digits.substr(i, 2), 16);
    if (!byte) return std::nullopt;
    bytes.push_back(*byte);
  }
  return refl::CValue(std::move(bytes));
}

Parsed nullOf(std::string_view text) {
  return text.empty() ? Parsed(refl::CValue()) : std::nullopt;
}

struct TypeWord {
  std::string_view prefix;
  Parsed (*parse)(std::string_view);
};

constexpr TypeWord kTypeWords[] = {
    {"integer:", integerOf}, {"real:", realOf}, {"text:", textOf},
    {"bytes:", bytesOf},     {"null:", nullOf},
};

}  // namespace

Parsed parseSqlValue(std::string_view text) {
  for (const TypeWord& word : kTypeWords) {
    if (text.substr(0, word.prefix.size()) == word.prefix) {
      return word.parse(text.substr(word.prefix.size()));
    }
  }
  return text.empty() ? std::nullopt : textOf(text);
}

}  // namespace ormaagent
