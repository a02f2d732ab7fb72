// The arguments of a command: how each type looks on the command line, and the values as the
// operations take them.
//
//   const Arguments arguments({"12"}, {{"--wait", "5"}});  // checked by the command line already
//   EMFTopoI::getDevice(arguments.number<long>(0), device);
//   const auto wait = std::chrono::seconds(arguments.numberOption<int>("--wait"));
//
// Thread-safety: immutable. A value that its type would not have accepted, or an argument or option
// that is not there, throws std::logic_error: the command line checks all before anything runs.
#pragma once

#include <charconv>
#include <cstddef>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ormaagent {

enum class ArgumentType {
  kInt64,      // decimal
  kInt32,      // decimal
  kUint32,     // decimal
  kUint64,     // decimal
  kErrorCode,  // unsigned, 64 bits: decimal, hexadecimal with 0x, octal with a leading 0
  kSeconds,    // decimal, up to a day
  kText,       // any bytes, as they are
  kNonEmpty,   // a text of at least one byte
  kPicture,    // a file name that ends in .svg or .dot
  kSqlValue    // as sql_value.h says
};

// "a whole number from 0 to 4294967295", for messages and help.
const char* describe(ArgumentType type);

// Whether `text` is a value of that type.
bool accepts(ArgumentType type, std::string_view text);

// A number without blanks, plus sign or anything behind it; nothing when it is none or too large
// for T.
template <class T>
std::optional<T> parseNumber(std::string_view text, int base = 10) {
  T number{};
  const char* const end = text.data() + text.size();
  const auto [stopped, error] = std::from_chars(text.data(), end, number, base);
  if (error != std::errc() || stopped != end) return std::nullopt;
  return number;
}

std::optional<unsigned long> parseErrorCode(std::string_view text);

class Arguments {
 public:
  using Options = std::map<std::string, std::string>;  // "--wait" and its value
  // "--param" and its values, in their order.
  using RepeatedOptions = std::map<std::string, std::vector<std::string>>;

  explicit Arguments(std::vector<std::string> texts, Options options = {},
                     RepeatedOptions repeated = {})
      : texts_(std::move(texts)), options_(std::move(options)), repeated_(std::move(repeated)) {}

  // Those that were given; options are not among them.
  std::size_t count() const { return texts_.size(); }

  const std::string& text(std::size_t i) const { return texts_.at(i); }
  const std::vector<std::string>& texts() const { return texts_; }

  // An option of the command: the value that was given, else its default.
  const std::string& option(const std::string& name) const { return options_.at(name); }

  // What was given for an option that may be repeated.
  const std::vector<std::string>& repeatedOption(const std::string& name) const {
    return repeated_.at(name);
  }

  // Whether the command has that option, given or not.
  bool hasRepeatedOption(const std::string& name) const { return repeated_.count(name) > 0; }

  template <class T>
  T numberOption(const std::string& name) const {
    return checked(parseNumber<T>(option(name)));
  }

  template <class T>
  T number(std::size_t i) const {
    return checked(parseNumber<T>(text(i)));
  }

  unsigned long errorCode(std::size_t i) const { return checked(parseErrorCode(text(i))); }

 private:
  template <class T>
  static T checked(std::optional<T> value) {
    if (!value) throw std::logic_error("an argument went through unchecked");
    return *value;
  }

  std::vector<std::string> texts_;
  Options options_;
  RepeatedOptions repeated_;
};

}  // namespace ormaagent
