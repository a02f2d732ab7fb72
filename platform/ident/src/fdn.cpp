#include "fdn.h"

namespace orma::ident {

std::optional<FdnSegment> parseSegment(std::string_view piece) {
  const std::size_t equals = piece.find('=');
  if (equals == std::string_view::npos || equals == 0 || equals + 1 == piece.size()) {
    return std::nullopt;
  }
  return FdnSegment{piece.substr(0, equals), piece.substr(equals + 1)};
}

std::optional<std::vector<FdnSegment>> parseFdn(std::string_view fdn) {
  std::vector<FdnSegment> segments;
  for (std::size_t comma = 0; comma != std::string_view::npos;) {
    comma = fdn.find(',');
    const auto segment = parseSegment(fdn.substr(0, comma));
    if (!segment) return std::nullopt;
    segments.push_back(*segment);
    if (comma != std::string_view::npos) fdn.remove_prefix(comma + 1);
  }
  return segments;
}

}  // namespace orma::ident
