#include "json_text.h"

#include <memory>
#include <sstream>

namespace orma::rest {

std::string wholeText(const Json::StreamWriter::Factory& format, const Json::Value& value) {
  std::ostringstream text;
  text.exceptions(std::ios::badbit);  // otherwise a stream keeps a lack of memory to itself
  const std::unique_ptr<Json::StreamWriter> writer(format.newStreamWriter());
  writer->write(value, &text);
  return text.str();
}

}  // namespace orma::rest
