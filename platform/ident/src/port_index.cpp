#include "orma/ident/port_index.h"

#include <array>
#include <charconv>
#include <string_view>

#include "fdn.h"

namespace {

using NS_DOMAIN::PortIndex;

// The id of a port is its FDN, then its domain type, its type and its name, each behind a ";":
// "NE=12,FR=0,S=3,PP=5;0;65537;GE-3%2C5". A coordinate of -1 has no segment.
constexpr char kFieldEnd = ';';
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

std::string escaped(const std::string& name) {
  std::string text;
  for (const char character : name) {
    if (kEscaped.find(character) == std::string_view::npos) {
      text += character;
    } else {
      const auto byte = static_cast<unsigned char>(character);
      text += {'%', kHexDigits[byte >> 4], kHexDigits[byte & 0xF]};
    }
  }
  return text;
}

// An escape that is cut short or holds no hexadecimal digits stays as it stands.
std::string unescaped(std::string_view text) {
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

void readPlace(std::string_view fdn, PortIndex& port) {
  const auto segments = orma::ident::parseFdn(fdn);
  if (!segments) return;
  for (const auto& segment : *segments) {
    for (const Coordinate& coordinate : kCoordinates) {
      if (segment.key == coordinate.key) readNumber(segment.value, port.*coordinate.field);
    }
  }
  port.logicalFlag = segments->back().key == kLogicalKey ? 1 : 0;
}

}  // namespace

namespace NS_UTIL {

void ResIDUtil::PortIndex2ResID(const PortIndex& port, std::string& resourceId, bool logical) {
  const std::string_view unwanted = logical ? kPhysicalKey : kLogicalKey;
  resourceId.clear();
  for (const Coordinate& coordinate : kCoordinates) {
    const std::int32_t number = port.*coordinate.field;
    if (number == -1 || coordinate.key == unwanted) continue;
    if (!resourceId.empty()) resourceId += ',';
    resourceId.append(coordinate.key).append("=").append(std::to_string(number));
  }
  resourceId += kFieldEnd + std::to_string(port.domainType);
  resourceId += kFieldEnd + std::to_string(port.type);
  resourceId += kFieldEnd + escaped(port.portName);
}

void ResIDUtil::ResID2PortIndex(const std::string& resourceId, PortIndex& port) {
  std::string_view rest = resourceId;
  readPlace(nextField(rest), port);
  readNumber(nextField(rest), port.domainType);
  readNumber(nextField(rest), port.type);
  if (rest.data() != nullptr) port.portName = unescaped(rest);
}

}  // namespace NS_UTIL
