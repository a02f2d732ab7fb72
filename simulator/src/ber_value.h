// BER read by a description of its types into a tree of values.
//
//   const BerValue request = readBer(bytes, kRequestType, Tagging::Implicit);
//   request.member("ucTypeFlag").number
//
// Thread-safety: thread-safe. Failure: BadMessage that names the field.
#pragma once

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "ber_writer.h"

namespace ormasim {

// Bytes that are not the message that is due.
class BadMessage : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

enum class BerKind { Integer, Octets, Sequence, SequenceOf };

struct BerType;

// A field of a sequence; one with a context number is optional.
struct BerField {
  const char* name;
  const BerType* type;
  int context = kNoContext;
};

struct BerType {
  BerKind kind;
  const BerField* fields = nullptr;  // Sequence
  std::size_t fieldCount = 0;
  const BerType* element = nullptr;  // SequenceOf
};

struct BerValue {
  const char* name = "";
  std::int64_t number = 0;         // Integer
  std::string octets;              // Octets
  std::vector<BerValue> children;  // fields that are there, or elements

  // The field of that name; null when it is absent.
  const BerValue* find(std::string_view field) const;
  // Of a required field.
  const BerValue& member(std::string_view field) const { return *find(field); }
};

BerValue readBer(std::string_view bytes, const BerType& type, Tagging tagging);

}  // namespace ormasim
