#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "message_walk.h"

namespace emf::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr long kWrongListTag = -54;
constexpr long kUnexpectedTag = -1;

template <typename List>
std::vector<int> numbersIn(const List& list) {
  std::vector<int> numbers;
  for (list.toFirst(); const AsnInt* item = list.current(); list.toNext()) numbers.push_back(*item);
  return numbers;
}

void expectFailure(const std::unique_ptr<CSM_Exception>& failure, long code, long line,
                   const std::string& message) {
  ASSERT_NE(failure, nullptr);
  EXPECT_EQ(failure->code(), code);
  EXPECT_EQ(failure->line(), line);
  EXPECT_EQ(failure->text(), "");
  EXPECT_EQ(failure->file(), "emfalminterface");
  EXPECT_EQ(failure->message(), message);
  EXPECT_EQ(failure->buffer(), nullptr);
}

void expectWrongListTag(const std::unique_ptr<CSM_Exception>& failure) {
  expectFailure(failure, kWrongListTag, 250, "AsnList::BDec: ERROR tag on SEQUENCE OF is wrong.");
}

void expectUnexpectedTag(const std::unique_ptr<CSM_Exception>& failure) {
  expectFailure(failure, kUnexpectedTag, 183, "Unexpected Tag");
}

template <typename... Lists>
struct ListTypes {};
using AllLists =
    ListTypes<ASNULList, ASNUCList, AsnResDNList, AsnAlmQryExtendConditionSeqOf,
              AsnSvrToOtherQryRespResultStrcSeqOf, AsnOtherToSvrQryAlmEventReqSeqOf1,
              AsnDistinguishedResourceSeqOf, AsnAlmKeyList, AsnLstAlmQryExtendCondition,
              AsnOtherToSvrQryAlmEventReqSeqOf, AsnSvrToOtherQryRespResultList>;

template <typename... Lists, typename Check>
void forEachList(ListTypes<Lists...>, Check check) {
  (check(Lists()), ...);
}

// The abstract list alone, with what it leaves open.
class PlainList : public AsnList<AsnInt> {
 public:
  PlainList* clone() const override { return nullptr; }
  void BDec(AsnBuf&, unsigned long&, NIClass_EncodingFormatEnum) override {}
  unsigned long BEnc(AsnBuf&, NIClass_EncodingFormatEnum) const override { return 0; }
};

static_assert(std::is_abstract_v<AsnList<AsnInt>> && std::is_abstract_v<AsnSeqOf<AsnInt>>);
static_assert(!std::is_same_v<ASNULList, ASNUCList>);
static_assert(std::is_base_of_v<AsnSeqOf<AsnOcts>, AsnResDNList>);
static_assert(std::is_base_of_v<AsnList<AsnAddiInfo>, AsnSvrToOtherQryRespResultStrcSeqOf>);
static_assert(std::is_base_of_v<AsnType, ASNULList>);
static_assert(std::is_base_of_v<AsnSeqOf<AsnRelation>, AsnDistinguishedResourceSeqOf>);
static_assert(std::is_base_of_v<AsnSeqOf<AsnAlmKeyStrc>, AsnAlmKeyList>);
static_assert(std::is_base_of_v<AsnSeqOf<AsnAlmQryExtendCondition>, AsnLstAlmQryExtendCondition>);
static_assert(
    std::is_base_of_v<AsnSeqOf<AsnDistinguishedResource>, AsnOtherToSvrQryAlmEventReqSeqOf>);
static_assert(
    std::is_base_of_v<AsnSeqOf<AsnSvrToOtherQryRespResultStrc>, AsnSvrToOtherQryRespResultList>);
// Count, first, last and current behind the table.
static_assert(sizeof(ASNULList) == 5 * sizeof(void*));

TEST(AsnList, NamesAreThoseOfTheClasses) {
  std::vector<std::string> names;
  forEachList(AllLists(), [&names](const auto& list) { names.emplace_back(list.typeName()); });
  EXPECT_THAT(
      names,
      ElementsAre("ASNULList", "ASNUCList", "AsnResDNList", "AsnAlmQryExtendConditionSeqOf",
                  "AsnSvrToOtherQryRespResultStrcSeqOf", "AsnOtherToSvrQryAlmEventReqSeqOf1",
                  "AsnDistinguishedResourceSeqOf", "AsnAlmKeyList", "AsnLstAlmQryExtendCondition",
                  "AsnOtherToSvrQryAlmEventReqSeqOf", "AsnSvrToOtherQryRespResultList"));
  EXPECT_STREQ(PlainList().typeName(), "AsnList<T>");
}

TEST(AsnList, AppendingMovesTheCursorToTheNewNode) {
  ASNULList list;
  EXPECT_EQ(list.current(), nullptr);
  for (const int number : {1, 2, 3}) {
    list.add() = number;
    ASSERT_NE(list.current(), nullptr);
    EXPECT_EQ(int{*list.current()}, number);
    EXPECT_EQ(list.count(), static_cast<unsigned>(number));
  }
  EXPECT_THAT(numbersIn(list), ElementsAre(1, 2, 3));
  EXPECT_EQ(list.current(), nullptr);
}

TEST(AsnList, EmptyingForgetsEverything) {
  ASNULList list;
  list.add() = 1;
  list.add() = 2;
  list.clear();
  EXPECT_EQ(list.count(), 0U);
  EXPECT_TRUE(list.empty());
  EXPECT_EQ(list.current(), nullptr);
  list.toFirst();
  EXPECT_EQ(list.current(), nullptr);
  list.clear();
}

TEST(AsnList, WithoutElementsIsTwoBytes) {
  forEachList(AllLists(), [](auto list) {
    EXPECT_EQ(encoded(list), fromHex("30 00")) << list.typeName();
    list.add();
    EXPECT_EQ(decode(list, fromHex("30 00")), 2U) << list.typeName();
    EXPECT_EQ(list.count(), 0U) << list.typeName();
  });
}

TEST(AsnList, ElementsStandInTheOrderOfTheList) {
  ASNULList list;
  for (const int number : {1, -1, 128, 70000}) list.add() = number;
  EXPECT_EQ(encoded(list), fromHex("30 0F 02 01 01 02 01 FF 02 02 00 80 02 03 01 11 70"));
  AsnResDNList texts;
  texts.add().ReSet("NE=2");
  texts.add();
  EXPECT_EQ(encoded(texts), fromHex("30 08 04 04 4E 45 3D 32 04 00"));
}

TEST(AsnList, FormatIsNotLookedAt) {
  ASNULList list;
  list.add() = 5;
  AsnBuf buffer;
  EXPECT_EQ(list.BEnc(buffer, static_cast<NIClass_EncodingFormatEnum>(7)), 5U);
  AsnBuf reader(buffer.data(), buffer.size());
  unsigned long bytes = 100;
  ASNULList decoded;
  decoded.BDec(reader, bytes, static_cast<NIClass_EncodingFormatEnum>(0));
  EXPECT_EQ(bytes, 105U);
  EXPECT_THAT(numbersIn(decoded), ElementsAre(5));
}

TEST(AsnList, LengthIsShortUpTo127Bytes) {
  struct Row {
    std::size_t textSize;
    std::size_t contentSize;  // with the text's own header
    const char* header;
  };
  const Row kRows[] = {
      {0, 2, "30 02"},
      {124, 126, "30 7E"},
      {125, 127, "30 7F"},
      {126, 128, "30 81 80"},
      {252, 255, "30 81 FF"},
      {253, 256, "30 82 01 00"},
      {65531, 65535, "30 82 FF FF"},
      {65532, 65536, "30 83 01 00 00"},
  };
  for (const Row& row : kRows) {
    AsnResDNList list;
    const std::string text(row.textSize, 'x');
    list.add().ReSet(text.data(), text.size());
    const std::string bytes = encoded(list);
    const std::string header = fromHex(row.header);
    EXPECT_EQ(bytes.size(), header.size() + row.contentSize) << row.header;
    EXPECT_EQ(toHex(bytes.substr(0, header.size())), toHex(header));
    AsnResDNList decoded;
    EXPECT_EQ(decode(decoded, bytes), bytes.size()) << row.header;
    EXPECT_TRUE(same(decoded, list)) << row.header;
  }
}

TEST(AsnList, AnotherTagIsRefused) {
  for (const char* bytes : {"31 00", "02 01 05", "10 00", "70 00", "B0 00", "A0 00", "00 00",
                            "FF 01 00", "3F 10 00", "3F 81 30 00"}) {
    ASNULList list;
    list.add() = 7;
    expectWrongListTag(failureOf([&] { decode(list, fromHex(bytes)); }));
    EXPECT_THAT(numbersIn(list), ElementsAre(7)) << bytes;
  }
}

TEST(AsnList, NoByteLeftForTheTagIsAWrongTag) {
  ASNULList list;
  AsnBuf buffer("", 0UL);
  unsigned long bytes = 3;
  expectWrongListTag(failureOf([&] { list.BDec(buffer, bytes, NIClass_EncodingFormat_BER); }));
  EXPECT_TRUE(buffer.readError());
  EXPECT_EQ(bytes, 4U);
}

TEST(AsnList, NoByteLeftForTheLengthIsALengthOfZero) {
  const std::string bytes = fromHex("30");
  ASNULList list;
  list.add();
  AsnBuf buffer(bytes.data(), bytes.size());
  unsigned long count = 0;
  list.BDec(buffer, count, NIClass_EncodingFormat_BER);
  EXPECT_TRUE(buffer.readError());
  EXPECT_EQ(count, 2U);
  EXPECT_EQ(list.count(), 0U);
}

TEST(AsnList, DecodingReplacesTheElements) {
  ASNULList list;
  list.add() = 8;
  list.add() = 9;
  EXPECT_EQ(decode(list, fromHex("30 03 02 01 05")), 5U);
  EXPECT_THAT(numbersIn(list), ElementsAre(5));
  EXPECT_EQ(list.count(), 1U);
}

TEST(AsnList, LongLengthsInEveryForm) {
  for (const char* bytes : {"30 03 02 01 05", "30 81 03 02 01 05", "30 82 00 03 02 01 05",
                            "30 88 00 00 00 00 00 00 00 03 02 01 05"}) {
    ASNULList list;
    EXPECT_EQ(decode(list, fromHex(bytes)), fromHex(bytes).size()) << bytes;
    EXPECT_THAT(numbersIn(list), ElementsAre(5)) << bytes;
  }
}

TEST(AsnList, ElementThatRunsPastTheLengthIsTheLast) {
  ASNULList list;
  EXPECT_EQ(decode(list, fromHex("30 04 02 01 05 02 01 06 02 01 07")), 8U);
  EXPECT_THAT(numbersIn(list), ElementsAre(5, 6));
  EXPECT_EQ(decode(list, fromHex("30 01 02 01 05 02 01 06")), 5U);
  EXPECT_THAT(numbersIn(list), ElementsAre(5));
}

TEST(AsnList, LengthBeyondTheInputEndsInTheElementsFailure) {
  for (const char* bytes :
       {"30 09 02 01 05", "30 84 FF FF FF FF 02 01 05", "30 85 01 00 00 00 00 02 01 05",
        "30 88 7F FF FF FF FF FF FF FF 02 01 05"}) {
    ASNULList list;
    const auto failure = failureOf([&] { decode(list, fromHex(bytes)); });
    ASSERT_NE(failure, nullptr) << bytes;
    // What came before the failure stays, and so does the element that it fell into.
    EXPECT_THAT(numbersIn(list), ElementsAre(5, 0)) << bytes;
  }
  for (const char* bytes : {"30 88 FF FF FF FF FF FF FF FF 02 01 05",
                            "30 89 01 00 00 00 00 00 00 00 00 02 01 05", "30 FF 02 01 05"}) {
    ASNULList list;
    EXPECT_NE(failureOf([&] { decode(list, fromHex(bytes)); }), nullptr) << bytes;
    EXPECT_THAT(numbersIn(list), IsEmpty()) << bytes;
  }
}

TEST(AsnList, IndefiniteLengthWantsAListHeaderBeforeEachElement) {
  ASNULList list;
  const std::string bytes = fromHex("30 80 30 03 02 01 05 30 03 02 01 06 00 00 02 01 07");
  EXPECT_EQ(decode(list, bytes), 14U);
  EXPECT_THAT(numbersIn(list), ElementsAre(5, 6));
  // What that header says of the length is not looked at.
  for (const char* header : {"30 00", "30 7F", "30 80", "30 82 FF FF"}) {
    EXPECT_EQ(decode(list, fromHex("30 80 " + std::string(header) + " 02 01 05 00 00")),
              fromHex(header).size() + 7);
    EXPECT_THAT(numbersIn(list), ElementsAre(5));
  }
}

TEST(AsnList, IndefiniteLengthRefusesAnotherTag) {
  ASNULList list;
  expectUnexpectedTag(failureOf([&] { decode(list, fromHex("30 80 02 01 05 00 00")); }));
  EXPECT_THAT(numbersIn(list), IsEmpty());
  expectUnexpectedTag(
      failureOf([&] { decode(list, fromHex("30 80 30 03 02 01 05 31 03 02 01 06 00 00")); }));
  EXPECT_THAT(numbersIn(list), ElementsAre(5));
  expectUnexpectedTag(failureOf([&] { decode(list, fromHex("30 80 1F 22 03 02 01 05")); }));
}

TEST(AsnList, IndefiniteLengthEndsAtTheFirstZeroWhereATagIsDue) {
  ASNULList list;
  EXPECT_EQ(decode(list, fromHex("30 80 00 00 30 03 02 01 05")), 4U);
  EXPECT_THAT(numbersIn(list), IsEmpty());
  const auto failure = failureOf([&] { decode(list, fromHex("30 80 00 05")); });
  ASSERT_NE(failure, nullptr);
  EXPECT_EQ(failure->code(), kAsnBadEndOfContents);
}

TEST(AsnList, IndefiniteLengthWithoutAnEndIsTold) {
  ASNULList list;
  const std::string bytes = fromHex("30 80 30 03 02 01 05");
  AsnBuf buffer(bytes.data(), bytes.size());
  unsigned long count = 0;
  const auto failure = failureOf([&] { list.BDec(buffer, count, NIClass_EncodingFormat_BER); });
  ASSERT_NE(failure, nullptr);
  EXPECT_EQ(failure->code(), kAsnEndOfInput);
  EXPECT_TRUE(buffer.readError());
  EXPECT_THAT(numbersIn(list), ElementsAre(5));
}

TEST(AsnList, ContentIsDecodedUnderTheTagThatIsGiven) {
  const std::string bytes = fromHex("AB 03 02 01 05 00 00");
  ASNULList list;
  AsnBuf buffer(bytes.data(), bytes.size());
  unsigned long count = 10;
  list.BDecContent(buffer, 0xAB000000U, kAsnIndefiniteLength, count, NIClass_EncodingFormat_BER);
  EXPECT_EQ(count, 17U);
  EXPECT_THAT(numbersIn(list), ElementsAre(5));
  AsnBuf again(bytes.data(), bytes.size());
  expectUnexpectedTag(failureOf([&] {
    list.BDecContent(again, kAsnSequenceTag, kAsnIndefiniteLength, count,
                     NIClass_EncodingFormat_BER);
  }));
}

TEST(AsnList, EmptyContentEmptiesTheListAndReadsNothing) {
  ASNULList list;
  list.add();
  AsnBuf buffer("\x02", 1UL);
  unsigned long count = 10;
  list.BDecContent(buffer, kAsnSequenceTag, 0, count, NIClass_EncodingFormat_BER);
  EXPECT_EQ(count, 10U);
  EXPECT_EQ(buffer.remaining(), 1U);
  EXPECT_EQ(list.count(), 0U);
}

TEST(AsnList, ElementsBeforeAFailureStay) {
  ASNULList list;
  const auto failure =
      failureOf([&] { decode(list, fromHex("30 0A 02 01 05 02 01 06 04 01 07 02")); });
  ASSERT_NE(failure, nullptr);
  EXPECT_EQ(failure->code(), kAsnWrongTag);
  EXPECT_THAT(numbersIn(list), ElementsAre(5, 6, 0));
}

TEST(AsnList, CursorStandsAtTheLastElementAfterDecoding) {
  ASNULList list;
  decode(list, fromHex("30 06 02 01 05 02 01 06"));
  ASSERT_NE(list.current(), nullptr);
  EXPECT_EQ(int{*list.current()}, 6);
}

TEST(AsnList, CopyReplacesAndMovesTheSourcesCursor) {
  Randomness random(3);
  forEachList(AllLists(), [&random](auto source) {
    source.add();
    fill(source, random);
    source.toFirst();
    decltype(source) target;
    fill(target, random);
    target.add();
    target.assign(source);
    EXPECT_TRUE(same(target, source)) << source.typeName();
    target.assign(source);
    EXPECT_EQ(source.current(), nullptr) << source.typeName();
    EXPECT_EQ(target.count(), source.count());
    const std::unique_ptr<decltype(source)> clone(source.clone());
    EXPECT_TRUE(same(*clone, source)) << source.typeName();
    const AsnListBase& base = source;
    target.clear();
    target.assign(base);
    EXPECT_TRUE(same(target, source)) << source.typeName();
  });
}

TEST(AsnList, CopyingItselfDoesNothing) {
  ASNULList list;
  list.add() = 1;
  list.add() = 2;
  list.toFirst();
  list.assign(list);
  ASSERT_NE(list.current(), nullptr);
  EXPECT_EQ(int{*list.current()}, 1);
  EXPECT_THAT(numbersIn(list), ElementsAre(1, 2));
}

TEST(AsnList, CopyingStopsAtANodeWithoutAnElement) {
  ASNULList list;
  list.add() = 1;
  list.append(nullptr);
  list.add() = 3;
  EXPECT_EQ(list.count(), 3U);
  ASNULList copy;
  copy.assign(list);
  EXPECT_THAT(numbersIn(copy), ElementsAre(1));
  const std::unique_ptr<ASNULList> clone(list.clone());
  EXPECT_EQ(clone->count(), 1U);
  EXPECT_EQ(encoded(list), fromHex("30 06 02 01 01 02 01 03"));
}

template <typename List>
std::string printed(const List& list, unsigned int level, bool newLine) {
  std::ostringstream text;
  list.Print(text, level, newLine);
  return text.str();
}

TEST(AsnList, PrintsEachElementBehindADash) {
  ASNULList list;
  EXPECT_EQ(printed(list, 3, true), "");
  list.add() = 5;
  list.add() = -6;
  EXPECT_EQ(printed(list, 3, false), "- 5- -6");
  EXPECT_EQ(printed(list, 0, true), "\n- 5\n- -6");
  EXPECT_EQ(printed(list, 2, true), "\n    - 5\n    - -6");
}

TEST(AsnList, IndentsUpToLevelForty) {
  ASNULList list;
  list.add() = 5;
  for (unsigned int level = 0; level <= 40; ++level) {
    EXPECT_EQ(printed(list, level, true), "\n" + std::string(2 * level, ' ') + "- 5");
  }
  for (const unsigned int level : {41U, 42U, 1000U, 0xFFFFFFFFU}) {
    EXPECT_EQ(printed(list, level, true), "\n- 5") << level;
  }
}

TEST(AsnList, ElementsArePrintedOneLevelDeeper) {
  AsnAlmKeyList list;
  list.add().cDevType = 1;
  list.add().sAlmID = 2;
  EXPECT_EQ(printed(list, 1, true),
            "\n  - cDevType: 1\n    sAlmID: 0\n  - cDevType: 0\n    sAlmID: 2");
}

}  // namespace
}  // namespace emf::test
