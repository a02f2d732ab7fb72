#include "alarmjson.h"

#include <cstdlib>

#include "jsontext.h"

namespace emf {

const Json::Value& memberOf(const Json::Value& value, const char* key) {
  return value.isObject() ? value[key] : Json::Value::nullSingleton();
}

std::int32_t textNumber(const Json::Value& value) {
  return static_cast<std::int32_t>(std::strtol(value.asCString(), nullptr, 10));
}

std::string pageRequest(std::uint64_t offset, std::uint32_t limit) {
  Json::Value request;
  request["offset"] = Json::UInt64{offset};
  request["limit"] = Json::UInt{limit};
  return styledText(request);
}

}  // namespace emf
