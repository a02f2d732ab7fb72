#include "request_document.h"

#include <json/reader.h>

#include <algorithm>
#include <memory>

#include "parameters.h"
#include "services.h"

namespace ormasim {
namespace {

// A value takes a hundred bytes and more once it is read, however short its text.
constexpr std::size_t kMostValues = 250'000;

// What keeps a text from being read; nothing when the reader may try. The reader lets comments
// pass, and takes a null byte for the end of the text.
std::string faultOf(const std::string& text) {
  std::size_t values = 1;
  bool quoted = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (c == '\0' || (c == '/' && !quoted)) return "is not JSON";
    if (c == '"') quoted = !quoted;
    if (c == '\\' && quoted) ++i;
    const bool another = !quoted && (c == ',' || c == '[' || c == '{');
    if (another && ++values > kMostValues) {
      return "has more than " + std::to_string(kMostValues) + " values";
    }
  }
  return "";
}

}  // namespace

Json::Value parseDocument(const std::string& text, const char* what) {
  const std::string fault = faultOf(text);
  if (!fault.empty()) throw BadRequest(std::string(what) + " " + fault);
  Json::CharReaderBuilder builder;
  Json::CharReaderBuilder::strictMode(&builder.settings_);
  const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
  Json::Value document;
  bool good = false;
  try {
    good = reader->parse(text.data(), text.data() + text.size(), &document, nullptr);
  } catch (const Json::Exception&) {  // nesting beyond the reader's limit
  }
  if (!good) throw BadRequest(std::string(what) + " is not JSON");
  return document;
}

Json::Value postedDocument(const httplib::Request& request) {
  requireKnownParameters(request, {});
  requireJsonBody(request);
  return parseDocument(request.body, "the body");
}

void requireMembers(const Json::Value& object, const char* what,
                    std::initializer_list<const char*> members) {
  if (!object.isObject()) throw BadRequest(std::string(what) + " must be an object");
  for (const char* member : members) {
    if (!object.isMember(member)) {
      throw BadRequest(std::string(what) + " lacks \"" + member + "\"");
    }
  }
  requireKnownMembers(object, what, members);
}

void requireKnownMembers(const Json::Value& object, const char* what,
                         std::initializer_list<const char*> members) {
  if (!object.isObject()) throw BadRequest(std::string(what) + " must be an object");
  for (const std::string& name : object.getMemberNames()) {
    if (std::find(members.begin(), members.end(), name) == members.end()) {
      throw BadRequest(std::string(what) + " has the unknown member " + quoted(name));
    }
  }
}

std::int64_t limitOf(const Json::Value& limit, std::int64_t maximum) {
  if (!limit.isInt64() || limit.asInt64() < 1 || limit.asInt64() > maximum) {
    throw BadRequest("\"limit\" must be a number from 1 to " + std::to_string(maximum));
  }
  return limit.asInt64();
}

std::vector<std::string> textsOf(const Json::Value& array, const char* what, std::size_t most) {
  const std::string name = "\"" + std::string(what) + "\"";
  if (!array.isArray() || array.size() > most) {
    throw BadRequest(name + " must be an array of at most " + std::to_string(most) + " texts");
  }
  std::vector<std::string> texts;
  for (const Json::Value& text : array) {
    if (!text.isString()) throw BadRequest(name + " must hold texts only");
    texts.push_back(text.asString());
  }
  return texts;
}

}  // namespace ormasim
