#include "orma/ident/port_index.h"

#include <array>
#include <charconv>
#include <string_view>

#include "fdn.h"

namespace {

using NS_DOMAIN::PortIndex;
using orma::ident::FdnSegment;
using orma::ident::forEachSegment;

// The id of a port is its FDN, then its domain type, its type and its name, each behind a ";":
// "NE=12,FR=0,S=3,PP=5;0;65537;GE-3%2C5". A coordinate of -1 has no segment.
constexpr char kFieldEnd = ';';
constexpr std::size_t kUsualLength = 80;
constexpr std::string_view kEscaped = "%;,=";
constexpr char kHexDigits[] = "0123456789ABCDEF";

struct Coordinate {
  std::string_view key;
  std::int32_t PortIndex::*field;
};

constexpr std::array<Coordinate, 6> kCoordinates = {{{"NE", &PortIndex::neID},
                                                     {"FR", &PortIndex::shelfID},
                                                     {"S", &PortIndex::slotID},
                                                     {"SS", &PortIndex::subSlotID},
                                                     {"PP", &PortIndex::portID},
                                                     {"LP", &PortIndex::portID}}};

constexpr std::string_view kPhysicalKey = "PP";
constexpr std::string_view kLogicalKey = "LP";

void appendNumber(std::int32_t number, std::string& text) {
  char digits[12];
  text.append(digits, std::to_chars(digits, digits + sizeof digits, number).ptr);
}

void appendEscaped(std::string_view name, std::string& text) {
  for (std::size_t plain = name.find_first_of(kEscaped); plain != std::string_view::npos;
       plain = name.find_first_of(kEscaped)) {
    const auto byte = static_cast<unsigned char>(name[plain]);
    text.append(name.substr(0, plain));
    text += {'%', kHexDigits[byte >> 4], kHexDigits[byte & 0xF]};
    name.remove_prefix(plain + 1);
  }
  text.append(name);
}

// An escape that is cut short or holds no hexadecimal digits stays as it stands.
std::string unescaped(std::string_view text) {
  if (text.find('%') == std::string_view::npos) return std::string(text);
  std::string name;
  for (std::size_t i = 0; i < text.size(); ++i) {
    unsigned int byte = 0;
    const char* const digits = text.data() + i + 1;
    if (text[i] == '%' && i + 2 < text.size() &&
        std::from_chars(digits, digits + 2, byte, 16).ptr == digits + 2) {
      name += static_cast<char>(byte);
      i += 2;
    } else {
      name += text[i];
    }
  }
  return name;
}

void readNumber(std::string_view text, std::int32_t& number) {
  std::int32_t read = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, read);
  if (error == std::errc() && stop == end) number = read;
}

// Takes the next field off the front of `rest`, which has no data once there is no further one.
std::string_view nextField(std::string_view& rest) {
  const std::size_t end = rest.find(kFieldEnd);
  const std::string_view field = rest.substr(0, end);
  rest = end == std::string_view::npos ? std::string_view() : rest.substr(end + 1);
  return field;
}

void readSegment(const FdnSegment& segment, PortIndex& port) {
  for (const Coordinate& coordinate : kCoordinates) {
    if (segment.key == coordinate.key) readNumber(segment.value, port.*coordinate.field);
  }
  port.logicalFlag = segment.key == kLogicalKey ? 1 : 0;  // that of the last segment stays
}

// A place is read whole or not at all.
void readPlace(std::string_view fdn, PortIndex& port) {
  std::array<std::int32_t, kCoordinates.size()> before{};
  for (std::size_t i = 0; i < before.size(); ++i) before[i] = port.*kCoordinates[i].field;
  const std::uint8_t logicalBefore = port.logicalFlag;
  if (forEachSegment(fdn, [&port](const FdnSegment& segment) { readSegment(segment, port); })) {
    return;
  }
  for (std::size_t i = 0; i < before.size(); ++i) port.*kCoordinates[i].field = before[i];
  port.logicalFlag = logicalBefore;
}

}  // namespace

namespace NS_UTIL {

void ResIDUtil::PortIndex2ResID(const PortIndex& port, std::string& resourceId, bool logical) {
  const std::string_view unwanted = logical ? kPhysicalKey : kLogicalKey;
  resourceId.clear();
  resourceId.reserve(kUsualLength);
  for (const Coordinate& coordinate : kCoordinates) {
    const std::int32_t number = port.*coordinate.field;
    if (number == -1 || coordinate.key == unwanted) continue;
    if (!resourceId.empty()) resourceId += ',';
    resourceId.append(coordinate.key) += '=';
    appendNumber(number, resourceId);
  }
  resourceId += kFieldEnd;
  appendNumber(port.domainType, resourceId);
  resourceId += kFieldEnd;
  appendNumber(port.type, resourceId);
  resourceId += kFieldEnd;
  appendEscaped(port.portName, resourceId);
}

void ResIDUtil::ResID2PortIndex(const std::string& resourceId, PortIndex& port) {
  std::string_view rest = resourceId;
  readPlace(nextField(rest), port);
  readNumber(nextField(rest), port.domainType);
  readNumber(nextField(rest), port.type);
  if (rest.data() != nullptr) port.portName = unescaped(rest);
}

}  // namespace NS_UTIL
