#include <gmock/gmock.h>

#include <memory>
#include <sstream>
#include <stdexcept>
#include <utility>

#include "codec.h"
#include "sample.h"

namespace {

using Tagging = AsnTagging;

void setPoint(Point& point, int x, int y) {
  point.x = x;
  point.y = y;
}

// Every field that must be there, and no other.
void fillRequired(Sample& sample) {
  sample.number = 1;
  sample.name.ReSet("ab");
  setPoint(*sample.place, 2, 3);
  sample.values.add(4);
  sample.values.add(5);
  sample.last = 6;
}

void fillAll(Sample& sample) {
  fillRequired(sample);
  sample.flag = new AsnInt(-1);
  sample.target = new Point;
  setPoint(*sample.target, 7, 128);
  sample.notes = new ElementList<AsnOcts>;
  sample.notes->add("n");
  sample.children = new ElementList<Sample>;
  fillRequired(sample.children->add());
  sample.code = new AsnInt(8);
  sample.label = new AsnOcts("L");
  sample.path = new Point;
  setPoint(*sample.path, 9, 10);
}

// 02 number, 04 name, 30 place, 30 values, 02 last.
constexpr const char* kRequired =
    "30 1A 02 01 01 04 02 61 62 30 06 02 01 02 02 01 03 30 06 02 01 04 02 01 05 02 01 06";

// The same with every optional field behind its place in the list, under implicit tags:
// [0] 80, [2] A2, [1] A1, [3] A3, [31] 9F 1F, [200] 9F 81 48, [20000] BF 81 9C 20.
constexpr const char* kAllImplicit =
    "30 5D 02 01 01 04 02 61 62 80 01 FF 30 06 02 01 02 02 01 03 A2 07 02 01 07 02 02 00 80 "
    "30 06 02 01 04 02 01 05 A1 03 04 01 6E "
    "A3 1C 30 1A 02 01 01 04 02 61 62 30 06 02 01 02 02 01 03 30 06 02 01 04 02 01 05 02 01 06 "
    "9F 1F 01 08 9F 81 48 01 4C BF 81 9C 20 06 02 01 09 02 01 0A 02 01 06";

// And under explicit tags, which are constructed and hold the field with its own tag.
constexpr const char* kAllExplicit =
    "30 6B 02 01 01 04 02 61 62 A0 03 02 01 FF 30 06 02 01 02 02 01 03 "
    "A2 09 30 07 02 01 07 02 02 00 80 30 06 02 01 04 02 01 05 A1 05 30 03 04 01 6E "
    "A3 1E 30 1C 30 1A 02 01 01 04 02 61 62 30 06 02 01 02 02 01 03 30 06 02 01 04 02 01 05 02 01 "
    "06 "
    "BF 1F 03 02 01 08 BF 81 48 03 04 01 4C BF 81 9C 20 08 30 06 02 01 09 02 01 0A 02 01 06";

TEST(Sequence, OfRequiredFieldsIsTheSameInBothTaggings) {
  Sample sample;
  fillRequired(sample);
  EXPECT_EQ(encodedHex(sample, Tagging::Implicit), kRequired);
  EXPECT_EQ(encodedHex(sample, Tagging::Explicit), kRequired);
}

TEST(Sequence, PutsImplicitTagsInPlaceOfTheFieldsOwn) {
  Sample sample;
  fillAll(sample);
  EXPECT_EQ(encodedHex(sample, Tagging::Implicit), kAllImplicit);
}

TEST(Sequence, PutsExplicitTagsAroundTheFields) {
  Sample sample;
  fillAll(sample);
  EXPECT_EQ(encodedHex(sample, Tagging::Explicit), kAllExplicit);
}

TEST(Sequence, IsReadBackInBothTaggings) {
  for (const Tagging tagging : {Tagging::Implicit, Tagging::Explicit}) {
    const char* hex = tagging == Tagging::Implicit ? kAllImplicit : kAllExplicit;
    Sample sample;
    EXPECT_EQ(decode(sample, hex, tagging), all(fromHex(hex).size()));
    EXPECT_EQ(encodedHex(sample, tagging), hex);
  }
}

TEST(Sequence, OfOneTaggingIsRefusedInTheOther) {
  Sample sample;
  EXPECT_NE(decode(sample, kAllImplicit, Tagging::Explicit).code, 0);
  EXPECT_NE(decode(sample, kAllExplicit, Tagging::Implicit).code, 0);
}

TEST(Sequence, WithoutOptionalFieldsEndsWithNullPointers) {
  Sample sample;
  fillAll(sample);
  EXPECT_EQ(decode(sample, kRequired), all(28));
  EXPECT_EQ(sample.flag, nullptr);
  EXPECT_EQ(sample.target, nullptr);
  EXPECT_EQ(sample.notes, nullptr);
  EXPECT_EQ(sample.children, nullptr);
  EXPECT_EQ(sample.code, nullptr);
  EXPECT_EQ(sample.label, nullptr);
  EXPECT_EQ(sample.path, nullptr);
  EXPECT_EQ(encodedHex(sample), kRequired);
}

TEST(Sequence, KeepsObjectsThatAreThere) {
  Sample sample;
  fillAll(sample);
  const Point* const place = sample.place;
  const AsnInt* const flag = sample.flag;
  EXPECT_EQ(decode(sample, kAllImplicit).code, 0);
  EXPECT_EQ(sample.place, place);
  EXPECT_EQ(sample.flag, flag);
}

TEST(Sequence, MakesARequiredObjectThatIsMissing) {
  Sample sample;
  delete std::exchange(sample.place, nullptr);
  EXPECT_EQ(decode(sample, kRequired).code, 0);
  EXPECT_EQ(encodedHex(sample), kRequired);
}

TEST(Sequence, WithoutARequiredObjectIsNotEncoded) {
  Sample sample;
  delete std::exchange(sample.place, nullptr);
  const auto failure = failureOf([&] { encoded(sample); });
  ASSERT_NE(failure, nullptr);
  EXPECT_EQ(failure->code(), kAsnIncomplete);
  EXPECT_EQ(failure->message(), "A required field has no value to encode");
}

// Each subset of the seven optional fields, in both taggings.
TEST(Sequence, IsReadBackWithOptionalFieldsInAllCombinations) {
  for (unsigned int present = 0; present < 1U << 7; ++present) {
    Sample sample;
    fillAll(sample);
    if ((present & 1) == 0) delete std::exchange(sample.flag, nullptr);
    if ((present & 2) == 0) delete std::exchange(sample.target, nullptr);
    if ((present & 4) == 0) delete std::exchange(sample.notes, nullptr);
    if ((present & 8) == 0) delete std::exchange(sample.children, nullptr);
    if ((present & 16) == 0) delete std::exchange(sample.code, nullptr);
    if ((present & 32) == 0) delete std::exchange(sample.label, nullptr);
    if ((present & 64) == 0) delete std::exchange(sample.path, nullptr);
    for (const Tagging tagging : {Tagging::Implicit, Tagging::Explicit}) {
      const Bytes bytes = encoded(sample, tagging);
      Sample read;
      ASSERT_EQ(decode(read, bytes, tagging), all(bytes.size())) << present;
      ASSERT_EQ(encoded(read, tagging), bytes) << present;
      ASSERT_EQ(printed(read), printed(sample)) << present;
    }
  }
}

TEST(Sequence, PrintsOneLineForEachFieldThatIsThere) {
  Sample sample;
  fillAll(sample);
  EXPECT_EQ(printed(sample), R"(number: 1
name: "ab"
flag: -1
place:
  x: 2
  y: 3
target:
  x: 7
  y: 128
values:
  - 4
  - 5
notes:
  - "n"
children:
  - number: 1
    name: "ab"
    place:
      x: 2
      y: 3
    values:
      - 4
      - 5
    last: 6
code: 8
label: "L"
path:
  x: 9
  y: 10
last: 6)");
}

TEST(Sequence, PrintsNoIndentationBelowLevelForty) {
  Point point;
  std::ostringstream at40;
  point.Print(at40, 40, true);
  EXPECT_EQ(at40.str(), "\n" + std::string(80, ' ') + "x: 0\n" + std::string(80, ' ') + "y: 0");
  std::ostringstream at41;
  point.Print(at41, 41, true);
  EXPECT_EQ(at41.str(), "\nx: 0\ny: 0");
}

TEST(Sequence, HasTheNameOfItsDescriptor) { EXPECT_STREQ(Sample().typeName(), "Sample"); }

TEST(Sequence, AssignsDeepCopies) {
  Sample source;
  fillAll(source);
  Sample copy;
  copy.Assign(source);
  EXPECT_EQ(printed(copy), printed(source));
  EXPECT_NE(copy.place, source.place);
  EXPECT_NE(copy.label, source.label);
  *source.label = AsnOcts("changed");
  EXPECT_STREQ(copy.label->bytes().data(), "L");
}

TEST(Sequence, AssignsAbsenceToo) {
  Sample source;
  fillRequired(source);
  Sample copy;
  fillAll(copy);
  copy.Assign(source);
  EXPECT_EQ(copy.label, nullptr);
  EXPECT_EQ(encodedHex(copy), kRequired);
}

TEST(Sequence, AssignedToItselfStaysAsItIs) {
  Sample sample;
  fillAll(sample);
  sample.Assign(sample);
  EXPECT_EQ(encodedHex(sample), kAllImplicit);
}

TEST(Sequence, DoesNotBecomeACopyOfAnotherClass) {
  Sample sample;
  EXPECT_THROW(sample.Assign(Point()), std::logic_error);
}

TEST(Sequence, HasDeepClones) {
  Sample sample;
  fillAll(sample);
  const std::unique_ptr<AsnType> copy(sample.clone());
  EXPECT_EQ(encodedHex(*copy), kAllImplicit);
}

TEST(Sequence, EncodesAndDecodesItsContentAlone) {
  Point point;
  setPoint(point, 1, -1);
  AsnBuf written;
  EXPECT_EQ(point.BEncContent(written, NIClass_EncodingFormat_BER), 6U);
  EXPECT_EQ(toHex({written.data(), written.data() + written.size()}), "02 01 01 02 01 FF");
  AsnBuf buffer(written.data(), written.size());
  Point read;
  unsigned long count = 100;
  read.BDecContent(buffer, kAsnSequenceTag, 6, count, NIClass_EncodingFormat_BER);
  EXPECT_EQ(count, 106U);
  EXPECT_EQ(printed(read), "x: 1\ny: -1");
}

struct AcceptedCase {
  const char* what;
  const char* hex;
  const char* canonical;
  Tagging tagging = Tagging::Implicit;
};

void PrintTo(const AcceptedCase& accepted, std::ostream* out) { *out << accepted.what; }

class AcceptedForm : public testing::TestWithParam<AcceptedCase> {};

TEST_P(AcceptedForm, IsReadLikeTheUsualOne) {
  Sample sample;
  const Bytes bytes = fromHex(GetParam().hex);
  EXPECT_EQ(decode(sample, bytes, GetParam().tagging), all(bytes.size()));
  EXPECT_EQ(encodedHex(sample), toHex(fromHex(GetParam().canonical)));
}

constexpr const char* kWithTarget =
    "30 22 02 01 01 04 02 61 62 30 06 02 01 02 02 01 03 A2 06 02 01 02 02 01 03 "
    "30 06 02 01 04 02 01 05 02 01 06";

INSTANTIATE_TEST_SUITE_P(
    Asn1, AcceptedForm,
    testing::Values(
        AcceptedCase{"long lengths",
                     "30 84 00 00 00 1E 02 81 01 01 04 82 00 02 61 62 30 06 02 01 02 02 01 03 "
                     "30 81 06 02 01 04 02 01 05 02 01 06",
                     kRequired},
        AcceptedCase{"indefinite lengths",
                     "30 80 02 01 01 04 02 61 62 30 80 02 01 02 02 01 03 00 00 "
                     "30 06 02 01 04 02 01 05 02 01 06 00 00",
                     kRequired},
        AcceptedCase{"an optional field of indefinite length",
                     "30 80 02 01 01 04 02 61 62 30 06 02 01 02 02 01 03 "
                     "A2 80 02 01 02 02 01 03 00 00 30 06 02 01 04 02 01 05 02 01 06 00 00",
                     kWithTarget},
        AcceptedCase{"an explicit tag of indefinite length",
                     "30 26 02 01 01 04 02 61 62 30 06 02 01 02 02 01 03 "
                     "A2 80 30 06 02 01 02 02 01 03 00 00 30 06 02 01 04 02 01 05 02 01 06",
                     kWithTarget, Tagging::Explicit},
        AcceptedCase{"unknown fields at the end",
                     "30 25 02 01 01 04 02 61 62 30 06 02 01 02 02 01 03 30 06 02 01 04 02 01 05 "
                     "02 01 06 8A 01 FF BF 7F 05 02 01 01 05 00",
                     kRequired},
        AcceptedCase{"an unknown field at an indefinite end",
                     "30 80 02 01 01 04 02 61 62 30 06 02 01 02 02 01 03 30 06 02 01 04 02 01 05 "
                     "02 01 06 AA 80 30 80 02 01 01 00 00 04 00 00 00 00 00",
                     kRequired},
        AcceptedCase{"an unknown field of a nested sequence",
                     "30 1E 02 01 01 04 02 61 62 30 0A 02 01 02 02 01 03 80 02 01 02 "
                     "30 06 02 01 04 02 01 05 02 01 06",
                     kRequired}));

struct RefusedCase {
  const char* what;
  const char* hex;
  long code;
  Tagging tagging = Tagging::Implicit;
};

void PrintTo(const RefusedCase& refused, std::ostream* out) { *out << refused.what; }

class RefusedForm : public testing::TestWithParam<RefusedCase> {};

TEST_P(RefusedForm, FailsWithItsCode) {
  Sample sample;
  const Decoded result = decode(sample, GetParam().hex, GetParam().tagging);
  EXPECT_EQ(result.code, GetParam().code);
  EXPECT_EQ(result.readError, GetParam().code == kAsnEndOfInput);
}

INSTANTIATE_TEST_SUITE_P(
    Asn1, RefusedForm,
    testing::Values(
        RefusedCase{"a set", "31 00", kAsnWrongTag},
        RefusedCase{"a primitive sequence", "10 00", kAsnWrongTag},
        RefusedCase{"an empty sequence", "30 00", kAsnEndOfInput},
        RefusedCase{"an empty indefinite sequence", "30 80 00 00", kAsnBadEndOfContents},
        RefusedCase{"a field that is missing",
                    "30 17 02 01 01 04 02 61 62 30 06 02 01 02 02 01 03 30 06 02 01 04 02 01 05",
                    kAsnEndOfInput},
        RefusedCase{"fields in another order",
                    "30 1A 04 02 61 62 02 01 01 30 06 02 01 02 02 01 03 30 06 02 01 04 02 01 05 "
                    "02 01 06",
                    kAsnWrongTag},
        RefusedCase{"optional fields in another order",
                    "30 1D 02 01 01 80 01 FF 04 02 61 62 30 06 02 01 02 02 01 03 "
                    "30 06 02 01 04 02 01 05 02 01 06",
                    kAsnWrongTag},
        RefusedCase{"an optional field behind the last one",
                    "30 1D 02 01 01 04 02 61 62 30 06 02 01 02 02 01 03 30 06 02 01 04 02 01 05 "
                    "02 01 06 80 01 FF",
                    kAsnWrongTag},
        RefusedCase{"a field without a context tag behind the last one",
                    "30 1D 02 01 01 04 02 61 62 30 06 02 01 02 02 01 03 30 06 02 01 04 02 01 05 "
                    "02 01 06 02 01 07",
                    kAsnWrongTag},
        RefusedCase{"an explicit field behind the last one",
                    "30 1F 02 01 01 04 02 61 62 30 06 02 01 02 02 01 03 30 06 02 01 04 02 01 05 "
                    "02 01 06 A0 03 02 01 FF",
                    kAsnWrongTag, Tagging::Explicit},
        RefusedCase{"a field with a long tag behind the last one",
                    "30 1E 02 01 01 04 02 61 62 30 06 02 01 02 02 01 03 30 06 02 01 04 02 01 05 "
                    "02 01 06 9F 1F 01 08",
                    kAsnWrongTag},
        RefusedCase{"a type that no field has behind the last one",
                    "30 1C 02 01 01 04 02 61 62 30 06 02 01 02 02 01 03 30 06 02 01 04 02 01 05 "
                    "02 01 06 05 00",
                    kAsnWrongTag},
        RefusedCase{"a private tag behind the last field",
                    "30 1D 02 01 01 04 02 61 62 30 06 02 01 02 02 01 03 30 06 02 01 04 02 01 05 "
                    "02 01 06 CA 01 FF",
                    kAsnWrongTag},
        RefusedCase{"an end of contents in a definite sequence",
                    "30 1C 02 01 01 04 02 61 62 30 06 02 01 02 02 01 03 30 06 02 01 04 02 01 05 "
                    "02 01 06 00 00",
                    kAsnBadEndOfContents},
        RefusedCase{"an end of contents in place of a field", "30 80 02 01 01 00 00",
                    kAsnBadEndOfContents},
        RefusedCase{"half an end of contents",
                    "30 80 02 01 01 04 02 61 62 30 06 02 01 02 02 01 03 30 06 02 01 04 02 01 05 "
                    "02 01 06 00 01",
                    kAsnBadEndOfContents},
        RefusedCase{"an indefinite sequence that does not end",
                    "30 80 02 01 01 04 02 61 62 30 06 02 01 02 02 01 03 30 06 02 01 04 02 01 05 "
                    "02 01 06",
                    kAsnEndOfInput},
        RefusedCase{"a field that is longer than its sequence",
                    "30 05 02 01 01 04 7F 61 62 30 06 02 01 02 02 01 03 30 06 02 01 04 02 01 05 "
                    "02 01 06",
                    kAsnEndOfInput},
        RefusedCase{"a nested sequence that is longer than its sequence",
                    "30 0F 02 01 01 04 02 61 62 30 7F 02 01 02 02 01 03 30 06 02 01 04 02 01 05 "
                    "02 01 06",
                    kAsnEndOfInput},
        RefusedCase{"an own list with another tag",
                    "30 1A 02 01 01 04 02 61 62 30 06 02 01 02 02 01 03 31 06 02 01 04 02 01 05 "
                    "02 01 06",
                    -54},
        RefusedCase{"an implicit tag of another form",
                    "30 1D 02 01 01 04 02 61 62 A0 01 FF 30 06 02 01 02 02 01 03 "
                    "30 06 02 01 04 02 01 05 02 01 06",
                    kAsnWrongTag},
        RefusedCase{"an explicit tag around another type",
                    "30 1F 02 01 01 04 02 61 62 A0 03 04 01 FF 30 06 02 01 02 02 01 03 "
                    "30 06 02 01 04 02 01 05 02 01 06",
                    kAsnWrongTag, Tagging::Explicit},
        RefusedCase{"an explicit tag around two values",
                    "30 22 02 01 01 04 02 61 62 A0 06 02 01 FF 02 01 FF 30 06 02 01 02 02 01 03 "
                    "30 06 02 01 04 02 01 05 02 01 06",
                    kAsnWrongTag, Tagging::Explicit},
        RefusedCase{"an explicit tag around the next field, too",
                    "30 1F 02 01 01 04 02 61 62 A0 0B 02 01 FF 30 06 02 01 02 02 01 03 "
                    "30 06 02 01 04 02 01 05 02 01 06",
                    kAsnWrongTag, Tagging::Explicit},
        RefusedCase{"an explicit tag with half an end of contents",
                    "30 21 02 01 01 04 02 61 62 A0 80 02 01 FF 00 01 30 06 02 01 02 02 01 03 "
                    "30 06 02 01 04 02 01 05 02 01 06",
                    kAsnBadEndOfContents, Tagging::Explicit},
        RefusedCase{"an explicit tag around nothing",
                    "30 1C 02 01 01 04 02 61 62 A0 00 30 06 02 01 02 02 01 03 "
                    "30 06 02 01 04 02 01 05 02 01 06",
                    kAsnEndOfInput, Tagging::Explicit},
        RefusedCase{"a length of 2^32", "30 85 01 00 00 00 00 02 01 01", kAsnEndOfInput},
        RefusedCase{"a length of 2^64", "30 89 01 00 00 00 00 00 00 00 00 02 01 01", kAsnBadLength},
        RefusedCase{"a length of 2^64 - 1, which is no indefinite one",
                    "30 88 FF FF FF FF FF FF FF FF 02 01 01", kAsnBadLength},
        RefusedCase{"an unknown primitive field of indefinite length",
                    "30 80 02 01 01 04 02 61 62 30 06 02 01 02 02 01 03 30 06 02 01 04 02 01 05 "
                    "02 01 06 8A 80 00 00 00 00",
                    kAsnBadLength},
        RefusedCase{"an unknown field that is longer than its sequence",
                    "30 1D 02 01 01 04 02 61 62 30 06 02 01 02 02 01 03 30 06 02 01 04 02 01 05 "
                    "02 01 06 8A 02 FF FF",
                    kAsnEndOfInput}));

}  // namespace
