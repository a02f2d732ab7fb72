#include "request_framing.h"

#include <charconv>

namespace ormasim {
namespace {

// The announced length; nothing when it is no decimal number. One that is too large for a number is
// the largest there is.
std::optional<std::size_t> readLength(const std::string& text) {
  if (text.empty() || text.find_first_not_of("0123456789") != std::string::npos) {
    return std::nullopt;
  }
  std::size_t length = 0;
  const auto end = std::from_chars(text.data(), text.data() + text.size(), length);
  return end.ec == std::errc() ? length : static_cast<std::size_t>(-1);
}

}  // namespace

bool takesBody(const std::string& method) {
  return method == "POST" || method == "PUT" || method == "PATCH";
}

FramingProblem bodyTooLong() {
  return {413, "the body has more than " + std::to_string(kBodyLimitBytes) + " bytes"};
}

std::optional<FramingProblem> framingProblem(const httplib::Request& request) {
  const std::size_t lengths = request.get_header_value_count("Content-Length");
  const std::string length = request.get_header_value("Content-Length");
  const bool encoded = request.has_header("Transfer-Encoding");
  if (!takesBody(request.method)) {
    if (!encoded && (lengths == 0 || (lengths == 1 && length == "0"))) return std::nullopt;
    return FramingProblem{400, "a " + request.method + " request has no body here"};
  }
  if (encoded) {
    const bool chunked = request.get_header_value("Transfer-Encoding") == "chunked";
    if (chunked && lengths == 0) return std::nullopt;
    return FramingProblem{400, "header Transfer-Encoding must be chunked, without Content-Length"};
  }
  if (lengths == 0) return FramingProblem{411, "header Content-Length is missing"};
  const auto size = readLength(length);
  if (lengths > 1 || !size) {
    return FramingProblem{400, "header Content-Length is not one decimal number"};
  }
  return *size > kBodyLimitBytes ? std::make_optional(bodyTooLong()) : std::nullopt;
}

}  // namespace ormasim
