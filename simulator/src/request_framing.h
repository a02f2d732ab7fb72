// Whether the head of a request says how long the body is, and whether that is an acceptable
// length. The HTTP library waits for a body that never comes, and takes one that it does not expect
// for the next request; such requests are refused before it reads on.
//
//   if (const auto problem = framingProblem(request)) setError(response, problem->status, …);
//
// Thread-safety: thread-safe.
#pragma once

#include <httplib.h>

#include <cstddef>
#include <optional>
#include <string>

namespace ormasim {

// Of a request.
constexpr std::size_t kHeadLimitBytes = 64u << 10;
constexpr std::size_t kBodyLimitBytes = 16u << 20;

struct FramingProblem {
  int status;
  std::string reason;
};

// Whether requests of the method have a body; the others have none here.
bool takesBody(const std::string& method);

// The refusal of a body that is too long.
FramingProblem bodyTooLong();

std::optional<FramingProblem> framingProblem(const httplib::Request& request);

}  // namespace ormasim
