// Ids of links: "IPLINK=204:77" is the link 77, of kind 204.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace orma::southbound {

// The resource type of a kind of link: "VLINK", "L2LINK" or "IPLINK", which any other kind is too.
std::string_view resTypeOf(std::int32_t kind);

std::string linkResId(std::int32_t kind, std::int64_t link);

struct LinkKey {
  std::int64_t link;
  std::string_view resType;  // points into the text that was parsed
};

// The number behind the last "=" or ":", and the type in front of the first "=". Nothing when there
// is no "=" or no number.
std::optional<LinkKey> parseLinkResId(std::string_view text);

}  // namespace orma::southbound
