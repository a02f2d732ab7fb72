#include "json_reader.h"

#include <json/reader.h>

#include <memory>

namespace orma::rest {

bool readJson(std::string& text, std::size_t maxNesting, Json::Value& value, std::string& reason) {
  Json::CharReaderBuilder builder;
  Json::CharReaderBuilder::strictMode(&builder.settings_);
  builder["stackLimit"] = static_cast<Json::UInt64>(maxNesting);
  const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
  return reader->parse(text.data(), text.data() + text.size(), &value, &reason);
}

}  // namespace orma::rest
