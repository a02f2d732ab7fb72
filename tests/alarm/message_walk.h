// Walking messages by their tables, for tests: random values, comparison, value notation in XML.
//
//   Randomness random(seed);
//   fill(message, random);
//   EXPECT_TRUE(same(message, other)) << xml(message);
//
// Thread-safety: thread-compatible.
#pragma once

#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <string_view>

#include "faultmessages.h"
#include "orma/asn1/csm_exception.h"

namespace emf::test {

// --- Fields

template <typename Member, typename Message>
decltype(auto) memberAt(Message& message, const AsnField<Member>& field) {
  using Byte = std::conditional_t<std::is_const_v<Message>, const char, char>;
  using Result = std::conditional_t<std::is_const_v<Message>, const Member, Member>;
  return *reinterpret_cast<Result*>(reinterpret_cast<Byte*>(&message) + field.position);
}

// Calls `visit(name, member)` for each field, in order.
template <typename Fields, typename Visit>
void forEachField(AsnMessage<Fields>& message, Visit visit) {
  std::apply([&](const auto&... field) { (visit(field.name, memberAt(message, field)), ...); },
             Fields::fields());
}
template <typename Fields, typename Visit>
void forEachField(const AsnMessage<Fields>& message, Visit visit) {
  std::apply([&](const auto&... field) { (visit(field.name, memberAt(message, field)), ...); },
             Fields::fields());
}

template <typename T, short tag>
const T* valueOf(const OptionalField<T, tag>& field) {
  return field ? &*field : nullptr;
}
template <typename T>
const T* valueOf(const RequiredField<T>& field) {
  return &*field;
}
template <typename T>
const T* valueOf(const T& value) {
  return &value;
}

template <typename Member>
constexpr bool kIsOptional = false;
template <typename T, short tag>
constexpr bool kIsOptional<OptionalField<T, tag>> = true;

// --- Random values

class Randomness {
 public:
  explicit Randomness(unsigned seed) : engine_(seed) {}

  // Of 0 to `last`.
  unsigned upTo(unsigned last) { return std::uniform_int_distribution<unsigned>(0, last)(engine_); }
  bool oneIn(unsigned count) { return upTo(count - 1) == 0; }
  // Of every length in bytes.
  int number() {
    const auto bits = static_cast<unsigned>(engine_());
    return static_cast<int>(bits) >> upTo(31);
  }
  // Mostly short, sometimes of two bytes' length; of every byte, zero included.
  std::string bytes() {
    std::string text(oneIn(8) ? upTo(300) : upTo(20), '\0');
    for (char& byte : text) byte = static_cast<char>(upTo(255));
    return text;
  }

 private:
  std::mt19937 engine_;
};

inline void fill(AsnInt& value, Randomness& random) { value.Set(random.number()); }

inline void fill(AsnOcts& value, Randomness& random) {
  const std::string bytes = random.bytes();
  value.ReSet(bytes.data(), bytes.size());
}

template <typename T, const char* name>
void fill(AsnNamedSeqOf<T, name>& list, Randomness& random);

template <typename Fields>
void fill(AsnMessage<Fields>& message, Randomness& random) {
  forEachField(message, [&random](const char*, auto& member) {
    using Member = std::remove_reference_t<decltype(member)>;
    if constexpr (kIsOptional<Member>) {
      if (random.oneIn(2)) fill(member.make(), random);
    } else if constexpr (std::is_base_of_v<AsnType, Member>) {
      fill(member, random);
    } else {
      fill(*member, random);
    }
  });
}

template <typename T, const char* name>
void fill(AsnNamedSeqOf<T, name>& list, Randomness& random) {
  for (unsigned count = random.upTo(3); count > 0; --count) fill(list.add(), random);
}

// Makes exactly those optional fields present whose bit of `present` is set, the first one's
// lowest, and gives the number of optional fields.
template <typename Fields>
int setPresent(AsnMessage<Fields>& message, unsigned present) {
  int count = 0;
  forEachField(message, [&](const char*, auto& member) {
    if constexpr (kIsOptional<std::remove_reference_t<decltype(member)>>) {
      if ((present >> count++ & 1U) != 0) member.make();
    }
  });
  return count;
}

// --- Comparison: by the value notation, which names every field that is there

inline std::string xml(const AsnInt& value) { return std::to_string(int{value}); }

inline std::string xml(const AsnOcts& value) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  std::string text;
  for (const char byte : std::string_view(value.bytes().data(), value.bytes().size())) {
    const auto bits = static_cast<unsigned char>(byte);
    text += kDigits[bits >> 4];
    text += kDigits[bits & 0xF];
  }
  return text;
}

inline std::string element(const std::string& name, const std::string& content) {
  return content.empty() ? "<" + name + "></" + name + ">"
                         : "<" + name + ">" + content + "</" + name + ">";
}

template <typename T, const char* name>
std::string xml(const AsnNamedSeqOf<T, name>& list);

// The basic canonical XML encoding, without the element around it.
template <typename Fields>
std::string xml(const AsnMessage<Fields>& message) {
  std::string text;
  forEachField(message, [&text](const char* name, const auto& member) {
    if (const auto* value = valueOf(member)) text += element(name, xml(*value));
  });
  return text;
}

template <typename T, const char* name>
std::string xml(const AsnNamedSeqOf<T, name>& list) {
  std::string text;
  for (list.toFirst(); const T* item = list.current(); list.toNext()) {
    text += element(item->typeName(), xml(*item));
  }
  return text;
}

template <typename T>
bool same(const T& a, const T& b) {
  return xml(a) == xml(b);
}

// --- Bytes

inline std::string encoded(const AsnType& object, AsnTagging tagging = AsnTagging::Implicit) {
  AsnBuf buffer(tagging);
  const unsigned long size = object.BEnc(buffer, NIClass_EncodingFormat_BER);
  std::string bytes(reinterpret_cast<const char*>(buffer.data()), buffer.size());
  return size == bytes.size() ? bytes : "the size is not that of the bytes";
}

// The number of bytes read.
inline unsigned long decode(AsnType& object, const std::string& bytes,
                            AsnTagging tagging = AsnTagging::Implicit) {
  // Exactly as large as the input, so that the address sanitizer sees the first byte too many.
  const std::unique_ptr<char[]> exact(new char[bytes.size()]);
  if (!bytes.empty()) std::memcpy(exact.get(), bytes.data(), bytes.size());
  AsnBuf buffer(exact.get(), bytes.size(), tagging);
  unsigned long count = 0;
  object.BDec(buffer, count, NIClass_EncodingFormat_BER);
  return count;
}

// "30 03 02 01 05" as bytes.
inline std::string fromHex(const std::string& text) {
  std::string bytes;
  for (std::size_t at = 0; at + 1 < text.size(); ++at) {
    if (text[at] == ' ') continue;
    bytes += static_cast<char>(std::stoi(text.substr(at++, 2), nullptr, 16));
  }
  return bytes;
}

inline std::string toHex(const std::string& bytes) {
  AsnOcts octets;
  octets.ReSet(bytes.data(), bytes.size());
  return xml(octets);
}

// The failure that `body` throws by pointer; null when it throws none.
template <typename Body>
std::unique_ptr<CSM_Exception> failureOf(Body body) {
  try {
    body();
  } catch (CSM_Exception* thrown) {
    return std::unique_ptr<CSM_Exception>(thrown);
  }
  return nullptr;
}

}  // namespace emf::test
