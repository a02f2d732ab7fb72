#include "asnlist.h"

#include <array>

#include "orma/asn1/csm_exception.h"

namespace emf {

namespace {

// Where the other side knows these failures to be.
constexpr char kFile[] = "emfalminterface";
constexpr long kWrongListTag = -54;
constexpr long kWrongListTagLine = 250;
constexpr long kUnexpectedTag = -1;
constexpr long kUnexpectedTagLine = 183;

constexpr unsigned int kLongTag = 0x1FU << 24;  // the first byte of a tag that goes on
constexpr unsigned char kLongLength = 0x80;
constexpr unsigned long kLastShortLength = 127;

constexpr unsigned int kLastIndentedLevel = 40;
constexpr std::size_t kMostBlanks = 2 * kLastIndentedLevel;

constexpr std::array<char, kMostBlanks + 1> blanks() {
  std::array<char, kMostBlanks + 1> text{};
  for (std::size_t i = 0; i < kMostBlanks; ++i) text[i] = ' ';
  return text;
}

constexpr std::array<char, kMostBlanks + 1> kBlanks = blanks();

[[noreturn]] void fail(long code, long line, const char* message) {
  throw new CSM_Exception(code, line, "", kFile, message, nullptr);
}

}  // namespace

unsigned int readTag(AsnBuf& buffer, unsigned long& bytes) {
  unsigned int tag = static_cast<unsigned int>(buffer.getByte()) << 24;
  ++bytes;
  if ((tag & kLongTag) == kLongTag) BDecTag_Impl(buffer, bytes, tag);
  return tag;
}

unsigned long readLength(AsnBuf& buffer, unsigned long& bytes) {
  const unsigned char first = buffer.getByte();
  ++bytes;
  return first < kLongLength ? first : BDecLen_Impl(buffer, bytes, first);
}

void readListTag(AsnBuf& buffer, unsigned long& bytes) {
  if (readTag(buffer, bytes) != kAsnSequenceTag) {  // no byte left reads as 0
    fail(kWrongListTag, kWrongListTagLine, "AsnList::BDec: ERROR tag on SEQUENCE OF is wrong.");
  }
}

void readElementTag(AsnBuf& buffer, unsigned long& bytes, unsigned int tag) {
  if (readTag(buffer, bytes) != tag) fail(kUnexpectedTag, kUnexpectedTagLine, "Unexpected Tag");
}

unsigned long writeListHeader(AsnBuf& buffer, unsigned long contentSize) {
  unsigned long lengthSize = 1;
  if (contentSize <= kLastShortLength) {
    buffer.putByte(static_cast<unsigned char>(contentSize));
  } else {
    lengthSize = BEncDefLenImpl(buffer, contentSize);
  }
  buffer.putByte(kAsnSequenceTag >> 24);
  return contentSize + lengthSize + 1;
}

const char* indentation(unsigned int level) {
  return level <= kLastIndentedLevel ? kBlanks.data() + (kMostBlanks - 2 * level) : "";
}

}  // namespace emf
