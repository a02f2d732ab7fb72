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
  const auto append = [&segments](const FdnSegment& segment) { segments.push_back(segment); };
  if (!forEachSegment(fdn, append)) return std::nullopt;
  return segments;
}

}  // namespace orma::ident
