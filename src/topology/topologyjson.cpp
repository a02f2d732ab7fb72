#include "topologyjson.h"

#include <cstdlib>

namespace {

constexpr char kProcIdWord[] = "ProcID ";

bool hasMember(const Json::Value& object, const char* key) {
  return object.isObject() && object.isMember(key);
}

}  // namespace

std::string getStringOrEmpty(const Json::Value& object, const char* key) {
  return hasMember(object, key) ? object[key].asString() : std::string();
}

bool getStringMember(const Json::Value& object, const char* key, std::string& out) {
  if (!hasMember(object, key)) return false;
  out = object[key].asString();
  return !out.empty();
}

std::string getProcIdText(const std::string& exInfo) {
  const std::size_t word = exInfo.find(kProcIdWord);
  if (word == std::string::npos) return std::string();
  const std::size_t start = word + sizeof kProcIdWord - 1;
  const std::size_t blank = exInfo.find(' ', start);
  return exInfo.substr(start, blank == std::string::npos ? blank : blank - start);
}

namespace emf {

std::int32_t leadingNumber(const std::string& text) {
  return static_cast<std::int32_t>(std::strtol(text.c_str(), nullptr, 10));
}

}  // namespace emf
