// What the platform's resource types are called: operator words, main types by FDN key, and the
// JSON key of each main type's sub type.
#include <array>
#include <charconv>
#include <string_view>

#include "orma/rest/rest_client.h"

namespace Nimbola {
namespace {

constexpr std::array<std::string_view, 6> kOperatorWords = {"equal", "notEqual", "greater",
                                                            "less",  "in",       "like"};

struct KeyRow {
  std::string_view fdnKey;
  MainType type;
};
constexpr std::array<KeyRow, 8> kKeys = {{
    {"NE", MAIN_TYPE_NETWORK_ELEMENT},
    {"FR", MAIN_TYPE_FRAME},
    {"S", MAIN_TYPE_SLOT},
    {"SS", MAIN_TYPE_DAUGHTER_SLOT},
    {"PP", MAIN_TYPE_PORT},
    {"LP", MAIN_TYPE_PORT},
    {"CP", MAIN_TYPE_CARD},
    {"SC", MAIN_TYPE_DAUGHTER_CARD},
}};

struct FieldRow {
  MainType type;
  std::string_view field;
};
constexpr std::array<FieldRow, 7> kSubTypeFields = {{
    {MAIN_TYPE_NETWORK_ELEMENT, "neType"},
    {MAIN_TYPE_FRAME, "frameType"},
    {MAIN_TYPE_SLOT, "cardType"},  // a slot is known by what it holds
    {MAIN_TYPE_DAUGHTER_SLOT, "daughterCardType"},
    {MAIN_TYPE_PORT, "portType"},
    {MAIN_TYPE_CARD, "cardType"},
    {MAIN_TYPE_DAUGHTER_CARD, "daughterCardType"},
}};

std::int64_t numberIn(std::string_view text) {
  std::int64_t number = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  return error == std::errc() && stop == end ? number : 0;
}

}  // namespace

std::string ToString(OperatorType op) {
  const auto index = static_cast<std::size_t>(op);
  return index < kOperatorWords.size() ? std::string(kOperatorWords[index]) : std::string();
}

MainType GetMainTypeFromFDN(const std::string& fdn) {
  std::string_view segment = fdn;
  segment.remove_prefix(segment.rfind(',') + 1);  // npos + 1 is 0: the whole text
  const auto equals = segment.find('=');
  if (equals == std::string_view::npos) return MAIN_TYPE_UNKNOWN;
  for (const KeyRow& row : kKeys) {
    if (row.fdnKey == segment.substr(0, equals)) return row.type;
  }
  return MAIN_TYPE_UNKNOWN;
}

std::string GetResSubTypeFieldName(MainType type) {
  for (const FieldRow& row : kSubTypeFields) {
    if (row.type == type) return std::string(row.field);
  }
  return std::string();
}

std::int64_t GetResSubTypeFromObj(const Json::Value& object, MainType type) {
  const std::string field = GetResSubTypeFieldName(type);
  if (field.empty() || !object.isObject()) return 0;
  const Json::Value& value = object[field];
  if (value.isInt64()) return value.asInt64();
  const char* begin = nullptr;
  const char* end = nullptr;
  if (value.getString(&begin, &end)) {
    return numberIn(std::string_view(begin, static_cast<std::size_t>(end - begin)));
  }
  return 0;
}

}  // namespace Nimbola
