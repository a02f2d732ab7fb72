// The JSON documents of requests, read strictly: what is unknown, missing or malformed is a
// BadRequest that names it, so that a wrong request cannot pass unnoticed.
//
//   const Json::Value document = postedDocument(request);
//   requireKnownMembers(document, "the body", {"limit", "marker"});
//
// Thread-safety: thread-safe.
#pragma once

#include <httplib.h>
#include <json/value.h>

#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

namespace ormasim {

// A JSON document of a request.
Json::Value parseDocument(const std::string& text, const char* what);
// The body of a POST that has no parameters besides.
Json::Value postedDocument(const httplib::Request& request);

// Refuses what is no object, and members other than these, all of which must be there.
void requireMembers(const Json::Value& object, const char* what,
                    std::initializer_list<const char*> members);
// Likewise, but any of these may be absent.
void requireKnownMembers(const Json::Value& object, const char* what,
                         std::initializer_list<const char*> members);

// A limit of objects for a page, from 1 to `maximum`.
std::int64_t limitOf(const Json::Value& limit, std::int64_t maximum);
// An array of at most `most` texts; `what` names it.
std::vector<std::string> textsOf(const Json::Value& array, const char* what, std::size_t most);

}  // namespace ormasim
