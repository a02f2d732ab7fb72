// The query parameters and headers of a request, read strictly: what is unknown, given twice or
// malformed is a BadRequest that names it, so that a wrong request cannot pass unnoticed.
#pragma once

#include <httplib.h>

#include <cstdint>
#include <initializer_list>
#include <string>

namespace ormasim {

// A text of a request in double quotes, for a message: no more than its beginning.
std::string quoted(const std::string& text);

// Refuses parameters other than these, and any that is given more than once.
void requireKnownParameters(const httplib::Request& request,
                            std::initializer_list<const char*> known);

// A decimal number from `minimum` to `maximum`; `fallback` when the parameter is absent.
std::int64_t integerParameter(const httplib::Request& request, const char* name,
                              std::int64_t fallback, std::int64_t minimum, std::int64_t maximum);

// Refuses a body that is not announced as JSON.
void requireJsonBody(const httplib::Request& request);

// Refuses request headers of the platform (X-Orma-…) whose values are malformed.
void requireValidHeaders(const httplib::Request& request);

}  // namespace ormasim
