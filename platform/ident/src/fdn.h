// An FDN taken apart: "NE=2,FR=1" is the segments NE=2 and FR=1.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

namespace orma::ident {

// Both views point into the text that was parsed.
struct FdnSegment {
  std::string_view key;
  std::string_view value;
};

// A segment of one piece of text, split at its first "="; nothing when it has no "=", no key or
// no value.
std::optional<FdnSegment> parseSegment(std::string_view piece);

// Gives each segment to `use`, outermost first; false at the first piece that is none.
template <typename Use>
bool forEachSegment(std::string_view fdn, Use use) {
  for (std::size_t comma = 0; comma != std::string_view::npos;) {
    comma = fdn.find(',');
    const auto segment = parseSegment(fdn.substr(0, comma));
    if (!segment) return false;
    use(*segment);
    if (comma != std::string_view::npos) fdn.remove_prefix(comma + 1);
  }
  return true;
}

// All segments, outermost first; nothing when the text is empty or any piece is no segment.
std::optional<std::vector<FdnSegment>> parseFdn(std::string_view fdn);

}  // namespace orma::ident
