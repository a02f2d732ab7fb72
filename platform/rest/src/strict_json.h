// What jsoncpp's reader lets pass although it is no JSON: the checks it leaves out.
//
// Thread-safety: thread-safe. Failure is told by the result.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace orma::rest {

// False, with a reason, when `text` holds a number, a character or a nesting that a strict reader
// refuses and jsoncpp's takes: "01", "1.", control characters inside texts, bytes between values
// that belong to no value. Bytes above 0x7f are not judged inside texts. True does not mean that
// `text` is JSON.
bool checkStrictJson(std::string_view text, std::size_t maxNesting, std::string& reason);

// The reason that both readers give for a nesting beyond the limit.
std::string tooDeepReason(std::size_t maxNesting);

bool isValidUtf8(std::string_view text);

}  // namespace orma::rest
