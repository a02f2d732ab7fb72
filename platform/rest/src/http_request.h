// A REST request in its wire form: URL with query, headers, body.
//
// Thread-safety: thread-safe functions on thread-compatible values.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "failure.h"
#include "orma/bundle/secret.h"
#include "restreq.h"

namespace orma::rest {

struct HttpRequest {
  std::string url;
  std::vector<std::string> headers;  // as libcurl takes them: "Name: value", "Name;" when empty
  SecretText secretHeader;           // the one with the token; empty: none
  bool post = false;
  std::string body;  // when post
};

// Composes the wire form of `request`; `token`, which may be empty, is fit for a header. False when
// something in it could not be sent without changing its meaning or breaking the request's frame.
bool composeRequest(const Nimbola::RestReq& request, const std::string& baseUrl,
                    std::string_view token, HttpRequest& wire, Failure& failure);

}  // namespace orma::rest
