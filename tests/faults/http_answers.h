// HTTP as the REST peer speaks it, well and badly.
//
// Thread-safety: thread-safe.
#pragma once

#include <string>
#include <vector>

#include "peer.h"

namespace emf::faults {

// Reads a request with its body; false when the client closed before.
bool readRequest(const Wire& wire);

// A whole answer with that body, behind which the connection closes.
std::string httpAnswer(const std::string& body, const std::string& status = "200 OK");
// The same that leaves the connection open.
std::string keptAnswer(const std::string& body);
// The same in two chunks.
std::string chunkedAnswer(const std::string& body);

// Where the status line, the headers and the whole of an answer end.
struct AnswerPlaces {
  explicit AnswerPlaces(const std::string& answer);
  std::size_t statusEnd;
  std::size_t headersEnd;
  std::size_t end;
};

// About `count` places from `begin` up to, not with, `end`: the first, the last and some between.
std::vector<std::size_t> placesBetween(std::size_t begin, std::size_t end, std::size_t count);

}  // namespace emf::faults
