// Why an exchange failed, in words for a person, and how it is told: one trace line with address,
// reason and what to check. Nothing secret gets into it: no token, no credentials of a URL, no
// query values.
//
// Thread-safety: thread-safe functions on thread-compatible values.
#pragma once

#include <curl/curl.h>

#include <string>
#include <string_view>

namespace orma::rest {

struct Failure {
  std::string reason;  // what went wrong: "HTTP status 503"
  std::string check;   // what a person should look at: "that the service is up"
};

// What to check when libcurl gives `code`, or when the service answers with `status`.
std::string_view checkFor(CURLcode code);
std::string_view checkFor(long status);

// `text` fit for one line of a log: control characters as \xNN.
std::string printable(std::string_view text);

// The address to show for `path` below `baseUrl`: credentials masked, query left out.
std::string shownAddress(std::string_view baseUrl, std::string_view path);

// Writes `text` with the source "restclient"; use REST_TRACE.
void trace(int level, int line, const std::string& text);

}  // namespace orma::rest

#define REST_TRACE(level, text) ::orma::rest::trace((level), __LINE__, (text))
