// JSON values as text for requests.
//
// Thread-safety: thread-safe on distinct values. Throws std::bad_alloc; the text is never cut.
#pragma once

#include <json/value.h>
#include <json/writer.h>

#include <string>

namespace orma::rest {

// What Json::writeString gives while there is memory. That one gives the start of the text, without
// a word, when there is none.
std::string wholeText(const Json::StreamWriter::Factory& format, const Json::Value& value);

}  // namespace orma::rest
