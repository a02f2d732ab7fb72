// Fields one by one: the forms of their tags, the levels that they take, and lists that end early.
#include <gmock/gmock.h>

#include <array>
#include <optional>

#include "codec.h"
#include "described.h"

namespace {

// A sequence that ends with an optional field.
template <short kTag>
struct Tagged : described::Sequence<Tagged<kTag>> {
  static constexpr const char* kName = "Tagged";
  static void addAttributes(refl::CClassInfor& infor) {
    described::addInt(infor, {"field", offsetof(Tagged, field), kTag, refl::Enum::OptionalPointer});
  }
  Tagged() = default;
  Tagged(const Tagged&) = delete;
  Tagged& operator=(const Tagged&) = delete;
  ~Tagged() override { delete field; }

  AsnInt* field = nullptr;
};

template <short kTag>
void expectTag(const std::string& tag) {
  Tagged<kTag> sequence;
  sequence.field = new AsnInt(5);
  const std::string hex = toHex(fromHex("30 0" + std::to_string(fromHex(tag).size() + 2) + tag));
  EXPECT_EQ(encodedHex(sequence), hex + " 01 05");
  Tagged<kTag> read;
  EXPECT_EQ(decode(read, hex + " 01 05"), all(fromHex(hex).size() + 2));
  ASSERT_NE(read.field, nullptr);
  EXPECT_EQ(int{*read.field}, 5);
}

TEST(ContextTag, IsOfAsFewBytesAsItsNumberTakes) {
  expectTag<0>("80");
  expectTag<30>("9E");
  expectTag<31>("9F 1F");
  expectTag<127>("9F 7F");
  expectTag<128>("9F 81 00");
  expectTag<16383>("9F FF 7F");
  expectTag<16384>("9F 81 80 00");
  expectTag<32767>("9F 81 FF 7F");
}

// Neither is passed over as an unknown field.
TEST(ContextTag, OfTheOtherTaggingIsRefused) {
  Tagged<3> sequence;
  EXPECT_EQ(decode(sequence, "30 03 83 01 05", AsnTagging::Explicit).code, kAsnWrongTag);
  EXPECT_EQ(decode(sequence, "30 05 A3 03 02 01 05", AsnTagging::Implicit).code, kAsnWrongTag);
  EXPECT_EQ(decode(sequence, "30 03 84 01 05", AsnTagging::Explicit), all(5));
}

struct Listing : described::Sequence<Listing> {
  static constexpr const char* kName = "Listing";
  static void addAttributes(refl::CClassInfor& infor) {
    described::addList<ElementList<AsnInt>>(infor, {"values", offsetof(Listing, values)});
  }
  ElementList<AsnInt> values;
};

// A list alone would take the missing length as 0 and set the buffer's flag.
TEST(ListField, ThatEndsWithoutALengthIsAnError) {
  Listing listing;
  EXPECT_EQ(decode(listing, "30 01 30"), (Decoded{kAsnEndOfInput, 2, 0, true}));
  EXPECT_EQ(decode(listing, "30 02 30 00"), all(4));
}

// A list of lists under a context tag.
struct Table : described::Sequence<Table> {
  static constexpr const char* kName = "Table";
  static void addAttributes(refl::CClassInfor& infor) {
    described::addList<ElementList<ElementList<AsnInt>>>(infor, {"rows", offsetof(Table, rows), 0});
  }
  ElementList<ElementList<AsnInt>> rows;
};

TEST(ListField, WhoseElementEndsWithoutALengthIsAnError) {
  Table table;
  EXPECT_EQ(decode(table, "30 03 A0 01 30").code, kAsnEndOfInput);
  EXPECT_EQ(decode(table, "30 04 A0 02 30 00"), all(6));
}

// The code of decoding when that many levels are open already.
long codeBehind(std::size_t open, AsnType& value, const char* hex, AsnTagging tagging) {
  const Bytes bytes = fromHex(hex);
  AsnBuf buffer(bytes.data(), bytes.size(), tagging);
  std::array<std::optional<AsnBuf::Level>, AsnBuf::kMaxLevels> levels;
  for (std::size_t i = 0; i < open; ++i) levels[i].emplace(buffer);
  unsigned long count = 0;
  return failureCode([&] { value.BDec(buffer, count, NIClass_EncodingFormat_BER); });
}

TEST(Level, IsTakenByEachSequenceListFieldAndExplicitTag) {
  Tagged<3> sequence;
  Listing listing;
  Table table;
  struct Row {
    AsnType& value;
    const char* hex;
    AsnTagging tagging;
    std::size_t levels;
  };
  for (const Row& row : {Row{sequence, "30 03 83 01 05", AsnTagging::Implicit, 1},
                         Row{sequence, "30 05 A3 03 02 01 05", AsnTagging::Explicit, 2},
                         Row{listing, "30 02 30 00", AsnTagging::Implicit, 2},
                         Row{table, "30 02 A0 00", AsnTagging::Implicit, 2},
                         Row{table, "30 04 A0 02 30 00", AsnTagging::Explicit, 3}}) {
    const std::size_t most = AsnBuf::kMaxLevels - row.levels;
    EXPECT_EQ(codeBehind(most, row.value, row.hex, row.tagging), 0) << row.hex;
    EXPECT_EQ(codeBehind(most + 1, row.value, row.hex, row.tagging), kAsnTooDeep) << row.hex;
  }
}

}  // namespace
