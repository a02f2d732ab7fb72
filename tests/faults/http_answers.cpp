#include "http_answers.h"

#include <cstdlib>
#include <sstream>

namespace emf::faults {
namespace {

std::string sized(const std::string& body) {
  return "Content-Type: application/json\r\nContent-Length: " + std::to_string(body.size()) +
         "\r\n";
}

std::string chunk(const std::string& bytes) {
  std::ostringstream text;
  text << std::hex << bytes.size() << "\r\n" << bytes << "\r\n";
  return text.str();
}

}  // namespace

bool readRequest(const Wire& wire) {
  const std::string head = wire.readTo("\r\n\r\n");
  const std::size_t length = head.find("Content-Length: ");
  if (length == std::string::npos) return !head.empty();
  const std::size_t size = std::strtoul(head.c_str() + length + 16, nullptr, 10);
  return wire.read(size).size() == size;
}

std::string httpAnswer(const std::string& body, const std::string& status) {
  return "HTTP/1.1 " + status + "\r\n" + sized(body) + "Connection: close\r\n\r\n" + body;
}

std::string keptAnswer(const std::string& body) {
  return "HTTP/1.1 200 OK\r\n" + sized(body) + "\r\n" + body;
}

std::string chunkedAnswer(const std::string& body) {
  const std::size_t half = body.size() / 2;
  return "HTTP/1.1 200 OK\r\nContent-Type: application/json\r\nTransfer-Encoding: chunked\r\n"
         "Connection: close\r\n\r\n" +
         chunk(body.substr(0, half)) + chunk(body.substr(half)) + "0\r\n\r\n";
}

AnswerPlaces::AnswerPlaces(const std::string& answer)
    : statusEnd(answer.find("\r\n") + 2),
      headersEnd(answer.find("\r\n\r\n") + 4),
      end(answer.size()) {}

std::vector<std::size_t> placesBetween(std::size_t begin, std::size_t end, std::size_t count) {
  std::vector<std::size_t> places;
  if (begin >= end) return places;
  const std::size_t last = end - 1 - begin;
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t place = begin + last * i / (count - 1);
    if (places.empty() || places.back() != place) places.push_back(place);
  }
  return places;
}

}  // namespace emf::faults
