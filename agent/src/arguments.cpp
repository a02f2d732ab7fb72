#include "arguments.h"

#include <cstdint>

#include "sql_value.h"

namespace ormaagent {

namespace {

struct TypeRow {
  ArgumentType type;
  const char* description;
  bool (*accepts)(std::string_view);
};

template <class T>
bool isNumber(std::string_view text) {
  return parseNumber<T>(text).has_value();
}

// Something has to stand before the ending.
bool endsWith(std::string_view text, std::string_view ending) {
  return text.size() > ending.size() && text.substr(text.size() - ending.size()) == ending;
}

constexpr TypeRow kTypes[] = {
    {ArgumentType::kInt64, "a whole number from -9223372036854775808 to 9223372036854775807",
     isNumber<std::int64_t>},
    {ArgumentType::kInt32, "a whole number from -2147483648 to 2147483647", isNumber<std::int32_t>},
    {ArgumentType::kUint32, "a whole number from 0 to 4294967295", isNumber<std::uint32_t>},
    {ArgumentType::kUint64, "a whole number from 0 to 18446744073709551615",
     isNumber<std::uint64_t>},
    {ArgumentType::kErrorCode,
     "a number of at most 64 bits: decimal, hexadecimal with 0x or octal with a leading 0",
     [](std::string_view text) { return parseErrorCode(text).has_value(); }},
    {ArgumentType::kSeconds, "a whole number of seconds from 0 to 86400",
     [](std::string_view text) {
       return parseNumber<std::uint32_t>(text).value_or(86401) <= 86400;
     }},
    {ArgumentType::kText, "a text", [](std::string_view) { return true; }},
    {ArgumentType::kNonEmpty, "a text that is not empty",
     [](std::string_view text) { return !text.empty(); }},
    {ArgumentType::kPicture, "a file name that ends in .svg or .dot",
     [](std::string_view text) { return endsWith(text, ".svg") || endsWith(text, ".dot"); }},
    {ArgumentType::kSqlValue,
     "a text that is not empty, or integer:N, real:N, text:T, bytes:HEX or null:",
     [](std::string_view text) { return parseSqlValue(text).has_value(); }},
};

const TypeRow& rowOf(ArgumentType type) {
  for (const TypeRow& row : kTypes) {
    if (row.type == type) return row;
  }
  throw std::logic_error("an argument type without a row");
}

}  // namespace

const char* describe(ArgumentType type) { return rowOf(type).description; }

bool accepts(ArgumentType type, std::string_view text) { return rowOf(type).accepts(text); }

// The forms that the resource files of the error texts take, too.
std::optional<unsigned long> parseErrorCode(std::string_view text) {
  const std::string_view prefix = text.substr(0, 2);
  if (prefix == "0x" || prefix == "0X") return parseNumber<unsigned long>(text.substr(2), 16);
  return parseNumber<unsigned long>(text, !text.empty() && text.front() == '0' ? 8 : 10);
}

}  // namespace ormaagent
