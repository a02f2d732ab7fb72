#include "orma/ident/resource_ids.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>
#include <string_view>

#include "fdn.h"

namespace {

using orma::ident::FdnSegment;

// The 64 bits of an id: 0 to 59 the element's number or the hash of a name below one, 60 set in a
// compatible id and clear in a resource id, 62 set below an element. 61 and 63 are never set.
constexpr std::uint64_t kNumberMask = (std::uint64_t{1} << 60) - 1;
constexpr std::uint64_t kCompatibleBit = std::uint64_t{1} << 60;
constexpr std::uint64_t kBelowElementBit = std::uint64_t{1} << 62;

// The forms in which a device id is written; the number is the same in each.
constexpr std::array<std::string_view, 4> kElementKeys = {"NE", "ONE", "EMS", "OS"};

// 64-bit FNV-1a.
class Hash {
 public:
  void add(std::string_view text) {
    for (const char byte : text) {
      state_ = (state_ ^ static_cast<unsigned char>(byte)) * 0x100000001B3;
    }
  }
  // The upper bits are folded into those that an id has room for.
  std::uint64_t folded() const { return (state_ ^ (state_ >> 60)) & kNumberMask; }

 private:
  std::uint64_t state_ = 0xCBF29CE484222325;
};

// The element's number in decimal digits alone; nothing for another key or a number too large.
std::optional<std::uint64_t> elementNumber(const FdnSegment& segment) {
  if (std::find(kElementKeys.begin(), kElementKeys.end(), segment.key) == kElementKeys.end()) {
    return std::nullopt;
  }
  std::uint64_t number = 0;
  const char* const end = segment.value.data() + segment.value.size();
  const auto [stop, error] = std::from_chars(segment.value.data(), end, number);
  if (error != std::errc() || stop != end || number > kNumberMask) return std::nullopt;
  return number;
}

std::int64_t flipped(std::int64_t id) {
  return static_cast<std::int64_t>(static_cast<std::uint64_t>(id) ^ kCompatibleBit);
}

}  // namespace

namespace NS_UTIL::compat {

std::int64_t ResID2IID(std::int64_t resourceId) { return flipped(resourceId); }

std::int64_t IID2ResID(std::int64_t iid) { return flipped(iid); }

}  // namespace NS_UTIL::compat

namespace resid_compat {

std::int64_t ResDN2ResID(const std::string& dn) {
  if (dn.find(',') == std::string::npos) {  // an element's name, whose number is the id
    const auto segment = orma::ident::parseSegment(dn);
    return segment ? static_cast<std::int64_t>(elementNumber(*segment).value_or(0)) : 0;
  }
  const std::vector<std::int64_t> ids = ExtractResIdsFromFDN(dn);
  return ids.empty() ? 0 : ids.back();
}

std::vector<std::int64_t> ExtractResIdsFromFDN(std::string fdn) {
  const auto segments = orma::ident::parseFdn(fdn);
  if (!segments) return {};
  const auto element = elementNumber(segments->front());
  if (!element) return {};

  std::vector<std::int64_t> ids{static_cast<std::int64_t>(*element)};
  // One hash runs along the path, so each id costs its own segment only.
  Hash hash;
  hash.add("NE=" + std::to_string(*element));
  for (std::size_t i = 1; i < segments->size(); ++i) {
    const FdnSegment& segment = (*segments)[i];
    hash.add(",");
    hash.add(segment.key);
    hash.add("=");
    hash.add(segment.value);
    ids.push_back(static_cast<std::int64_t>(kBelowElementBit | hash.folded()));
  }
  return ids;
}

}  // namespace resid_compat
