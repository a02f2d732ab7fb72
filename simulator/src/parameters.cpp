#include "parameters.h"

#include <json/json.h>

#include <algorithm>
#include <charconv>
#include <limits>
#include <memory>
#include <string_view>

#include "services.h"

namespace ormasim {
namespace {

// Digits only: no sign, no blanks, nothing behind them.
bool readDecimal(std::string_view text, std::uint64_t& number) {
  if (text.empty() || text.front() < '0' || text.front() > '9') return false;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && end == text.data() + text.size();
}

void requireDecimalHeader(const httplib::Request& request, const char* name,
                          std::uint64_t maximum) {
  if (!request.has_header(name)) return;
  std::uint64_t number = 0;
  if (!readDecimal(request.get_header_value(name), number) || number > maximum) {
    throw BadRequest(std::string("header ") + name + " is not a decimal number from 0 to " +
                     std::to_string(maximum));
  }
}

bool isJson(const std::string& text) {
  Json::CharReaderBuilder builder;
  builder["failIfExtra"] = true;
  const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
  Json::Value value;
  try {
    return reader->parse(text.data(), text.data() + text.size(), &value, nullptr);
  } catch (const Json::Exception&) {  // nesting beyond the reader's limit
    return false;
  }
}

}  // namespace

std::string quoted(const std::string& text) {
  constexpr std::size_t kMostBytes = 100;
  const std::size_t size = std::min(text.find('\0'), text.size());
  return "\"" + text.substr(0, std::min(size, kMostBytes)) + (size > kMostBytes ? "…\"" : "\"");
}

void requireKnownParameters(const httplib::Request& request,
                            std::initializer_list<const char*> known) {
  for (const auto& [name, value] : request.params) {
    if (std::find(known.begin(), known.end(), name) == known.end()) {
      throw BadRequest("unknown parameter " + quoted(name));
    }
    if (request.params.count(name) > 1) {
      throw BadRequest("parameter " + quoted(name) + " is given more than once");
    }
  }
}

std::int64_t integerParameter(const httplib::Request& request, const char* name,
                              std::int64_t fallback, std::int64_t minimum, std::int64_t maximum) {
  const auto entry = request.params.find(name);
  if (entry == request.params.end()) return fallback;
  std::uint64_t number = 0;
  if (!readDecimal(entry->second, number) || number < static_cast<std::uint64_t>(minimum) ||
      number > static_cast<std::uint64_t>(maximum)) {
    throw BadRequest("parameter " + quoted(entry->first) + " is " + quoted(entry->second) +
                     ", not a number from " + std::to_string(minimum) + " to " +
                     std::to_string(maximum));
  }
  return static_cast<std::int64_t>(number);
}

void requireJsonBody(const httplib::Request& request) {
  if (request.get_header_value("Content-Type") != "application/json") {
    throw BadRequest("header Content-Type is not application/json");
  }
}

void requireValidHeaders(const httplib::Request& request) {
  requireDecimalHeader(request, "X-Orma-Mode", std::numeric_limits<std::uint8_t>::max());
  requireDecimalHeader(request, "X-Orma-Option", std::numeric_limits<std::uint64_t>::max());
  if (request.has_header("X-Orma-Extra") && !isJson(request.get_header_value("X-Orma-Extra"))) {
    throw BadRequest("header X-Orma-Extra is not JSON");
  }
}

}  // namespace ormasim
