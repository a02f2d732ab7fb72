#include "jsontext.h"

#include <json/writer.h>

#include <memory>
#include <sstream>

namespace emf {

std::string styledText(const Json::Value& value) {
  std::ostringstream text;
  text.exceptions(std::ios::badbit);  // otherwise a stream keeps a lack of memory to itself
  const std::unique_ptr<Json::StreamWriter> writer(Json::StreamWriterBuilder().newStreamWriter());
  writer->write(value, &text);
  text << '\n';
  return text.str();
}

}  // namespace emf
