// Messages as OpenSSL's asn1parse takes them apart: every value's depth, form, tag and size.
#include <gtest/gtest.h>
#include <openssl/asn1.h>
#include <openssl/bio.h>

#include <memory>
#include <regex>
#include <sstream>

#include "message_walk.h"

namespace emf::test {
namespace {

// --- What asn1parse says: a line a value, "depth cons|prim name size"; no size for constructed
// values.

std::string dumped(const std::string& bytes) {
  const std::unique_ptr<BIO, int (*)(BIO*)> out(BIO_new(BIO_s_mem()), BIO_free);
  constexpr int kNoDump = 0;
  if (ASN1_parse_dump(out.get(), reinterpret_cast<const unsigned char*>(bytes.data()),
                      static_cast<long>(bytes.size()), 0, kNoDump) != 1) {
    return "it cannot be parsed";
  }
  char* text = nullptr;
  const long size = BIO_get_mem_data(out.get(), &text);
  return std::string(text, static_cast<std::size_t>(size));
}

std::string parsed(const std::string& bytes) {
  static const std::regex kValue(R"(^ *\d+:d=(\d+) +hl= *\d+ l= *(\d+) (cons|prim): +)"
                                 R"((SEQUENCE|INTEGER|OCTET STRING|cont \[ \d+ \]))");
  std::istringstream lines(dumped(bytes));
  std::string text;
  for (std::string line; std::getline(lines, line);) {
    std::smatch parts;
    // What is no value is the rest of a text with a line end in it.
    if (!std::regex_search(line, parts, kValue)) continue;
    text += parts[1].str() + ' ' + parts[3].str() + ' ' + parts[4].str();
    if (parts[3] == "prim") text += ' ' + parts[2].str();
    text += '\n';
  }
  return text;
}

// --- What is to be expected, from the values

struct Place {
  AsnTagging tagging;
  int depth;
  std::string name;  // of the context tag; empty: the type's own

  std::string line(const char* form, const std::string& own) const {
    return std::to_string(depth) + ' ' + form + ' ' + (name.empty() ? own : name);
  }
  Place inside() const { return {tagging, depth + 1, ""}; }
};

std::size_t sizeOf(int value) {
  std::size_t size = 1;
  while (value < -128 || value > 127) {
    value >>= 8;
    ++size;
  }
  return size;
}

std::string outline(const AsnInt& value, const Place& place) {
  return place.line("prim", "INTEGER") + ' ' + std::to_string(sizeOf(value)) + '\n';
}

std::string outline(const AsnOcts& value, const Place& place) {
  return place.line("prim", "OCTET STRING") + ' ' + std::to_string(value.bytes().size()) + '\n';
}

template <typename T, const char* name>
std::string outline(const AsnNamedSeqOf<T, name>& list, const Place& place);
template <typename Fields>
std::string outline(const AsnMessage<Fields>& message, const Place& place);

template <typename T>
std::string outlineOfTagged(const T& value, short tag, const Place& place) {
  const std::string context = "cont [ " + std::to_string(tag) + " ]";
  if (place.tagging == AsnTagging::Implicit) {
    return outline(value, {place.tagging, place.depth, context});
  }
  const Place wrapper = {place.tagging, place.depth, context};
  return wrapper.line("cons", "") + '\n' + outline(value, wrapper.inside());
}

template <typename Fields>
std::string outline(const AsnMessage<Fields>& message, const Place& place) {
  std::string text = place.line("cons", "SEQUENCE") + '\n';
  forEachField(message, [&](const char*, const auto& member) {
    using Member = std::decay_t<decltype(member)>;
    const auto* value = valueOf(member);
    if (value == nullptr) return;
    if constexpr (kIsOptional<Member>) {
      text += outlineOfTagged(*value, Member::kTag, place.inside());
    } else {
      text += outline(*value, place.inside());
    }
  });
  return text;
}

template <typename T, const char* name>
std::string outline(const AsnNamedSeqOf<T, name>& list, const Place& place) {
  std::string text = place.line("cons", "SEQUENCE") + '\n';
  for (list.toFirst(); const T* item = list.current(); list.toNext()) {
    text += outline(*item, place.inside());
  }
  return text;
}

template <typename Message>
class Asn1parse : public ::testing::Test {};

using Types =
    ::testing::Types<AsnOtherToSvrQryAlmEventReq, AsnSvrToOtherQryResp,
                     AsnSvrToOtherQryRespResultStrc, AsnDistinguishedResource, AsnRelation,
                     AsnAlmQryExtendCondition, AsnAddiInfo, AsnoFMSDateTimeStrc, AsnAlmKeyStrc>;
TYPED_TEST_SUITE(Asn1parse, Types, );

TYPED_TEST(Asn1parse, TakesRandomValuesApart) {
  Randomness random(41);
  for (const AsnTagging tagging : {AsnTagging::Implicit, AsnTagging::Explicit}) {
    for (int i = 0; i < 25; ++i) {
      TypeParam message;
      fill(message, random);
      ASSERT_EQ(parsed(encoded(message, tagging)), outline(message, {tagging, 0, ""}));
    }
  }
}

TYPED_TEST(Asn1parse, TakesEmptyValuesApart) {
  const TypeParam message;
  EXPECT_EQ(parsed(encoded(message)), outline(message, {AsnTagging::Implicit, 0, ""}));
}

}  // namespace
}  // namespace emf::test
