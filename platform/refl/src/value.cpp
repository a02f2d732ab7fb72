#include "orma/refl/value.h"

#include <array>
#include <charconv>
#include <cmath>
#include <optional>
#include <stdexcept>
#include <string_view>

namespace refl {
namespace {

constexpr std::array<const char*, 5> kTypeNames = {"empty", "integer", "real", "text", "binary"};

// The value itself stays out of the text: it may be a secret or megabytes long.
[[noreturn]] void refuse(CValue::Type type, const std::string& wanted) {
  throw std::range_error("a value of type " +
                         std::string(kTypeNames[static_cast<std::size_t>(type)]) +
                         " cannot be taken as " + wanted);
}

std::optional<std::int64_t> exactInteger(double real) {
  constexpr double kBound = 9223372036854775808.0;  // 2^63; int64's maximum is no double
  if (!(real >= -kBound && real < kBound) || std::trunc(real) != real) return std::nullopt;
  return static_cast<std::int64_t>(real);
}

std::optional<std::int64_t> exactInteger(std::string_view text) {
  std::int64_t value = 0;
  const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || stop != text.data() + text.size()) return std::nullopt;
  return value;
}

}  // namespace

// Not in the header: inlined, the variant's destructor draws false warnings from the compiler at
// every use.
// Texts and bytes are copied before they go into the variant: libstdc++ 12 destroys a variant whose
// own copying ran out of memory as though it held something.
CValue::CValue(const CValue& other) {
  if (const auto* text = std::get_if<std::string>(&other.data_)) {
    data_ = std::string(*text);
  } else if (const auto* bytes = std::get_if<Bytes>(&other.data_)) {
    data_ = Bytes(*bytes);
  } else {
    data_ = other.data_;
  }
}
CValue::CValue(CValue&&) noexcept = default;
CValue& CValue::operator=(const CValue& other) { return *this = CValue(other); }
CValue& CValue::operator=(CValue&&) noexcept = default;
CValue::~CValue() = default;

std::int64_t CValue::asInteger() const {
  std::optional<std::int64_t> value;
  if (const auto* integer = std::get_if<std::int64_t>(&data_)) value = *integer;
  if (const auto* real = std::get_if<double>(&data_)) value = exactInteger(*real);
  if (const auto* text = std::get_if<std::string>(&data_)) value = exactInteger(*text);
  if (!value) refuse(type(), "an integer");
  return *value;
}

std::int64_t CValue::asInteger(std::int64_t minimum, std::int64_t maximum) const {
  const std::int64_t value = asInteger();
  if (value < minimum || value > maximum) {
    throw std::range_error(std::to_string(value) + " is not between " + std::to_string(minimum) +
                           " and " + std::to_string(maximum));
  }
  return value;
}

double CValue::asReal() const {
  if (const auto* real = std::get_if<double>(&data_)) return *real;
  if (const auto* integer = std::get_if<std::int64_t>(&data_)) {
    const auto real = static_cast<double>(*integer);
    if (exactInteger(real) == *integer) return real;
  }
  refuse(type(), "a real");
}

std::string CValue::asText() const {
  if (const auto* text = std::get_if<std::string>(&data_)) return *text;
  if (const auto* integer = std::get_if<std::int64_t>(&data_)) return std::to_string(*integer);
  refuse(type(), "a text");
}

const Bytes& CValue::asBytes() const {
  if (const auto* bytes = std::get_if<Bytes>(&data_)) return *bytes;
  refuse(type(), "binary");
}

void CValue::ReadFrom(const CValue& other) { *this = other; }

void CValue::ChangeValueTypeEnum(Enum::DataTypeEnum wanted) {
  if (isEmpty()) return;
  switch (wanted) {
    case Enum::kDataEmpty:
      data_ = std::monostate();
      return;
    case Enum::kDataInteger:
      data_ = asInteger();
      return;
    case Enum::kDataReal:
      data_ = asReal();
      return;
    case Enum::kDataText:
      data_ = asText();
      return;
    case Enum::kDataBinary:
      if (const auto* text = std::get_if<std::string>(&data_)) {
        data_ = Bytes(text->begin(), text->end());
      }
      asBytes();
      return;
  }
  refuse(type(), "one of type number " + std::to_string(wanted));
}

TEValue::TEValue(const CValue& value) : CValue(value) {}

}  // namespace refl
