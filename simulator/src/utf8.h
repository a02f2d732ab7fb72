// Checks of texts that come from outside.
#pragma once

#include <cstddef>
#include <string_view>

namespace ormasim {

// The offset of the first byte that is no part of well-formed UTF-8; npos when all is well.
std::size_t findInvalidUtf8(std::string_view text);

}  // namespace ormasim
