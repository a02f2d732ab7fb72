#include "orma/ident/sdxml_interpreter_mgr.h"

#include <charconv>
#include <optional>
#include <string_view>

namespace NS_UTIL {
namespace {

constexpr std::string_view kSeparators = ",;";
constexpr std::string_view kBlanks = " \t\r\n";

std::string_view withoutBlanks(std::string_view piece) {
  const std::size_t first = piece.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return piece.substr(first, piece.find_last_not_of(kBlanks) - first + 1);
}

std::optional<int> integerIn(std::string_view piece) {
  int number = 0;
  const char* const end = piece.data() + piece.size();
  const auto [stop, error] = std::from_chars(piece.data(), end, number);
  if (error != std::errc() || stop != end) return std::nullopt;
  return number;
}

}  // namespace

SDXMLInterpreterMgr* SDXMLInterpreterMgr::Instance() {
  static SDXMLInterpreterMgr instance;
  return &instance;
}

void SDXMLInterpreterMgr::ParseIntList(const char* text, std::list<int>& out) {
  if (text == nullptr) return;
  std::string_view rest = text;
  while (true) {
    const std::size_t separator = rest.find_first_of(kSeparators);
    if (const auto number = integerIn(withoutBlanks(rest.substr(0, separator)))) {
      out.push_back(*number);
    }
    if (separator == std::string_view::npos) return;
    rest.remove_prefix(separator + 1);
  }
}

}  // namespace NS_UTIL
