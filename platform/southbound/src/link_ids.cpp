#include "link_ids.h"

#include <algorithm>
#include <charconv>

namespace orma::southbound {
namespace {

struct LinkKind {
  std::int32_t kind;
  std::string_view resType;
};

constexpr LinkKind kLinkKinds[] = {{0, "VLINK"}, {105, "L2LINK"}, {204, "IPLINK"}};
constexpr std::string_view kOtherResType = "IPLINK";

}  // namespace

std::string_view resTypeOf(std::int32_t kind) {
  const auto* row = std::find_if(std::begin(kLinkKinds), std::end(kLinkKinds),
                                 [kind](const LinkKind& known) { return known.kind == kind; });
  return row == std::end(kLinkKinds) ? kOtherResType : row->resType;
}

std::string linkResId(std::int32_t kind, std::int64_t link) {
  return std::string(resTypeOf(kind)) + '=' + std::to_string(kind) + ':' + std::to_string(link);
}

std::optional<LinkKey> parseLinkResId(std::string_view text) {
  const std::size_t equals = text.find('=');
  if (equals == std::string_view::npos) return std::nullopt;
  const std::size_t start = text.find_last_of("=:") + 1;
  LinkKey key{0, text.substr(0, equals)};
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data() + start, end, key.link);
  if (error != std::errc() || stop != end) return std::nullopt;
  return key;
}

}  // namespace orma::southbound
