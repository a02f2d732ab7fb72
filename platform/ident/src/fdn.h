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

// All segments, outermost first; nothing when the text is empty or any piece is no segment.
std::optional<std::vector<FdnSegment>> parseFdn(std::string_view fdn);

}  // namespace orma::ident
