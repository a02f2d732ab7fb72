// One value whose type is known at run time: what a database column or a described field holds.
//
// Thread-safety: thread-compatible. The conversions throw std::range_error, whose text names the
// value's type and the one asked for; nothing is ever cut or guessed.
//
//   refl::CValue column = cursor["dev_id"];
//   if (!column.isEmpty()) use(column.asInteger());
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "orma/bundle/export.h"

namespace refl {

using Bytes = std::vector<unsigned char>;

namespace Enum {
// The types of values, in the order of CValue::Type.
enum DataTypeEnum : int {
  kDataEmpty = 0,
  kDataInteger = 1,
  kDataReal = 2,
  kDataText = 3,
  kDataBinary = 4,
};
}  // namespace Enum

class ORMA_API CValue {
 public:
  // In the order of the alternatives in data_.
  enum class Type { Empty, Integer, Real, Text, Binary };

  // Empty: a column that is NULL, or that there is none.
  CValue() = default;
  explicit CValue(std::int64_t value) : data_(value) {}
  explicit CValue(double value) : data_(value) {}
  explicit CValue(std::string value) : data_(std::move(value)) {}
  explicit CValue(Bytes value) : data_(std::move(value)) {}
  CValue(const CValue&);
  CValue(CValue&&) noexcept;
  CValue& operator=(const CValue&);
  CValue& operator=(CValue&&) noexcept;
  ~CValue();

  Type type() const { return static_cast<Type>(data_.index()); }
  bool isEmpty() const { return type() == Type::Empty; }

  // An integer, a real without fraction that fits, or a text that is a decimal integer and
  // nothing else.
  std::int64_t asInteger() const;
  // The same, and the result lies in minimum..maximum.
  std::int64_t asInteger(std::int64_t minimum, std::int64_t maximum) const;
  // A real, or an integer that a double holds exactly.
  double asReal() const;
  // A text, or an integer in decimal.
  std::string asText() const;
  const Bytes& asBytes() const;

  // Takes over the type and the value of `other`, emptiness as well.
  void ReadFrom(const CValue& other);
  // Turns the value into one of that type, by the conversions above; a text also becomes its
  // bytes. An empty value stays empty, as NULL is NULL in every type, and any value can be made
  // empty. Where there is no such conversion it throws, and the value stays as it was.
  void ChangeValueTypeEnum(Enum::DataTypeEnum type);

  // Equal in type and value; 1 and 1.0 and "1" are three values.
  friend bool operator==(const CValue& a, const CValue& b) { return a.data_ == b.data_; }
  friend bool operator!=(const CValue& a, const CValue& b) { return !(a == b); }

 private:
  std::variant<std::monostate, std::int64_t, double, std::string, Bytes> data_;
};

// A value on its way into another, for ReadFrom: a copy of its own, so that neither end of the way
// depends on the other.
class ORMA_API TEValue : public CValue {
 public:
  TEValue(const CValue& value);  // converting, as values are handed over
};

}  // namespace refl
