#include "json_reader.h"

#include <json/reader.h>
#include <simdjson.h>

#include <algorithm>
#include <new>
#include <string_view>
#include <utility>

#include "strict_json.h"
#include "value_builder.h"

namespace orma::rest {
namespace {

namespace dom = simdjson::dom;

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// The member of that name; false when there is none.
bool findMember(const dom::element& root, std::string_view name, dom::element& found) {
  bool any = false;
  if (!root.is_object()) return any;
  for (const dom::key_value_pair member : dom::object(root)) {
    if (member.key != name) continue;
    found = member.value;
    any = true;
  }
  return any;
}

}  // namespace

bool JsonTopLevel::isArray(std::string_view name) const {
  dom::element member;
  return findMember(root_, name, member) && member.is_array();
}

bool JsonTopLevel::isTrue(std::string_view name) const {
  dom::element member;
  return findMember(root_, name, member) && member.is_bool() && bool(member);
}

std::string JsonTopLevel::text(std::string_view name) const {
  dom::element member;
  if (!findMember(root_, name, member) || !member.is_string()) return std::string();
  return std::string(std::string_view(member));
}

struct JsonReader::Parser {
  dom::parser parser;
};

JsonReader::JsonReader(std::size_t maxNesting)
    : maxNesting_(maxNesting), parser_(std::make_unique<Parser>()) {}
JsonReader::JsonReader(JsonReader&&) noexcept = default;
JsonReader& JsonReader::operator=(JsonReader&&) noexcept = default;
JsonReader::~JsonReader() = default;

JsonOutcome JsonReader::read(std::string& text, Json::Value& value, std::string& reason,
                             const Glance& glance) {
  value = Json::Value();
  try {
    return readDocument(text, value, reason, glance);
  } catch (const Json::Exception& tooLong) {  // a single text of 2 GiB
    reason = tooLong.what();
    return JsonOutcome::Refused;
  }
}

JsonOutcome JsonReader::readDocument(std::string& text, Json::Value& value, std::string& reason,
                                     const Glance& glance) {
  const bool marked = text.compare(0, kByteOrderMark.size(), kByteOrderMark) == 0;
  const std::size_t start = marked ? kByteOrderMark.size() : 0;
  text.reserve(text.size() + simdjson::SIMDJSON_PADDING);  // the parser reads beyond the end
  dom::element root;
  const auto error =
      parser_->parser.parse(text.data() + start, text.size() - start, false).get(root);
  switch (error) {
    case simdjson::SUCCESS:
      break;
    case simdjson::MEMALLOC:
      throw std::bad_alloc();
    case simdjson::UTF8_ERROR:    // broken texts must not cost the whole answer
    case simdjson::NUMBER_ERROR:  // an integer beyond 64 bits becomes a double, as in jsoncpp
    case simdjson::STRING_ERROR:  // half of a surrogate pair, from a name that was cut
      return readSlowly(text, start, value, reason);
    case simdjson::DEPTH_ERROR:
      reason = tooDeepReason(maxNesting_);
      return JsonOutcome::Refused;
    case simdjson::EMPTY:
      reason = "it is empty";
      return JsonOutcome::Refused;
    default:
      reason = simdjson::error_message(error);
      return JsonOutcome::Refused;
  }
  if (glance) glance(JsonTopLevel(root));
  Json::Value built;
  if (!buildValue(root, maxNesting_, built)) {
    reason = tooDeepReason(maxNesting_);
    return JsonOutcome::Refused;
  }
  value.swap(built);
  return JsonOutcome::Read;
}

JsonOutcome JsonReader::readSlowly(const std::string& text, std::size_t start, Json::Value& value,
                                   std::string& reason) const {
  const std::string_view document = std::string_view(text).substr(start);
  if (!checkStrictJson(document, maxNesting_, reason)) return JsonOutcome::Refused;
  Json::CharReaderBuilder builder;
  Json::CharReaderBuilder::strictMode(&builder.settings_);
  builder["strictRoot"] = false;
  builder["rejectDupKeys"] = false;
  builder["collectComments"] = false;
  builder["stackLimit"] = static_cast<Json::UInt64>(maxNesting_ + 1);  // counts the scalar inside
  const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
  Json::Value built;
  if (!reader->parse(document.data(), document.data() + document.size(), &built, &reason)) {
    std::replace(reason.begin(), reason.end(), '\n', ' ');
    return JsonOutcome::Refused;
  }
  value.swap(built);
  return isValidUtf8(document) ? JsonOutcome::Read : JsonOutcome::ReadInvalidUtf8;
}

}  // namespace orma::rest
