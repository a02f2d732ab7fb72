#include "ber_value.h"

#include <algorithm>

namespace ormasim {
namespace {

constexpr std::size_t kMaxIntegerBytes = 8;

unsigned char universalTag(BerKind kind) {
  switch (kind) {
    case BerKind::Integer:
      return 0x02;
    case BerKind::Octets:
      return 0x04;
    case BerKind::Sequence:
    case BerKind::SequenceOf:
      break;
  }
  return 0x30;
}

// Tags of one byte and definite lengths: what the messages need and nothing else.
class Reader {
 public:
  Reader(std::string_view bytes, Tagging tagging) : bytes_(bytes), tagging_(tagging) {}

  bool atEnd() const { return bytes_.empty(); }
  bool nextIs(unsigned char tag) const {
    return !atEnd() && static_cast<unsigned char>(bytes_.front()) == tag;
  }

  BerValue value(const BerField& field) {
    if (field.context == kNoContext) {
      return content(field, take(universalTag(field.type->kind), field.name));
    }
    const std::string_view inner = take(contextTag(field), field.name);
    if (tagging_ == Tagging::Implicit) return content(field, inner);
    Reader reader(inner, tagging_);
    BerValue value = reader.content(field, reader.take(universalTag(field.type->kind), field.name));
    reader.requireEnd(field.name);
    return value;
  }

  bool nextIsField(const BerField& field) const {
    return field.context == kNoContext || nextIs(contextTag(field));
  }

  void requireEnd(const char* name) const {
    if (!atEnd()) throw BadMessage(std::string("there is something behind ") + name);
  }

 private:
  unsigned char contextTag(const BerField& field) const {
    const bool constructed =
        tagging_ == Tagging::Explicit || (universalTag(field.type->kind) & 0x20) != 0;
    return static_cast<unsigned char>((constructed ? 0xA0 : 0x80) | field.context);
  }

  unsigned char byte(const char* name) {
    if (atEnd()) throw BadMessage(std::string("the message ends within ") + name);
    const auto byte = static_cast<unsigned char>(bytes_.front());
    bytes_.remove_prefix(1);
    return byte;
  }

  // The content of the value under that tag.
  std::string_view take(unsigned char tag, const char* name) {
    if (byte(name) != tag) throw BadMessage(std::string(name) + " has a wrong tag or is missing");
    std::size_t length = byte(name);
    if (length >= 0x80) {
      std::size_t bytes = length & 0x7F;
      if (bytes == 0 || bytes > 4) {
        throw BadMessage(std::string(name) + " has a length of a form that is not taken");
      }
      for (length = 0; bytes > 0; --bytes) length = length << 8 | byte(name);
    }
    if (length > bytes_.size()) throw BadMessage(std::string("the message ends within ") + name);
    const std::string_view content = bytes_.substr(0, length);
    bytes_.remove_prefix(length);
    return content;
  }

  BerValue content(const BerField& field, std::string_view bytes) const {
    BerValue value;
    value.name = field.name;
    switch (field.type->kind) {
      case BerKind::Integer:
        value.number = number(field.name, bytes);
        break;
      case BerKind::Octets:
        value.octets = std::string(bytes);
        break;
      case BerKind::Sequence:
        value.children = fields(*field.type, bytes);
        break;
      case BerKind::SequenceOf:
        value.children = elements({field.name, field.type->element}, bytes);
        break;
    }
    return value;
  }

  static std::int64_t number(const char* name, std::string_view bytes) {
    if (bytes.empty() || bytes.size() > kMaxIntegerBytes) {
      throw BadMessage(std::string(name) + " is an integer of a size that is not taken");
    }
    const bool negative = (static_cast<unsigned char>(bytes.front()) & 0x80) != 0;
    std::uint64_t number = negative ? ~std::uint64_t{0} : 0;
    for (const char byte : bytes) number = number << 8 | static_cast<unsigned char>(byte);
    return static_cast<std::int64_t>(number);
  }

  std::vector<BerValue> fields(const BerType& type, std::string_view bytes) const {
    Reader reader(bytes, tagging_);
    std::vector<BerValue> values;
    for (std::size_t i = 0; i < type.fieldCount; ++i) {
      const BerField& field = type.fields[i];
      if (reader.nextIsField(field)) values.push_back(reader.value(field));
    }
    reader.requireEnd("the last field");
    return values;
  }

  std::vector<BerValue> elements(const BerField& element, std::string_view bytes) const {
    Reader reader(bytes, tagging_);
    std::vector<BerValue> values;
    while (!reader.atEnd()) values.push_back(reader.value(element));
    return values;
  }

  std::string_view bytes_;
  const Tagging tagging_;
};

}  // namespace

const BerValue* BerValue::find(std::string_view field) const {
  const auto found = std::find_if(children.begin(), children.end(),
                                  [field](const BerValue& child) { return field == child.name; });
  return found == children.end() ? nullptr : &*found;
}

BerValue readBer(std::string_view bytes, const BerType& type, Tagging tagging) {
  Reader reader(bytes, tagging);
  BerValue value = reader.value({"the message", &type});
  reader.requireEnd("the message");
  return value;
}

}  // namespace ormasim
