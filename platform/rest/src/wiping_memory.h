// libcurl's memory, wiped when it is given back: a request with its token is composed in it.
//
// Thread-safety: thread-safe. Nothing is thrown.
#pragma once

namespace orma::rest {

// Starts libcurl. Where something else in the process has started it before, its memory is that
// one's.
void startCurl();

}  // namespace orma::rest
