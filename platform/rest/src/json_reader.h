// Reads a JSON text into a Json::Value: what jsoncpp's own strict reader gives, in half its time.
//
//   orma::rest::JsonReader reader(100);
//   Json::Value value;
//   std::string reason;
//   if (reader.read(text, value, reason) == JsonOutcome::Refused) report(reason);
//
// Thread-safety: thread-compatible; a reader keeps its working memory from text to text. Failure
// is told by the result, with the reason in words; nothing is thrown but std::bad_alloc.
#pragma once

#include <json/value.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace simdjson::dom {
class element;
}

namespace orma::rest {

enum class JsonOutcome {
  Read,
  ReadInvalidUtf8,  // read, though its bytes are no valid UTF-8; texts are kept byte for byte
  Refused,
};

// The members of a document's top object, seen before its Json::Value is built. Of members with
// one name the last counts.
class JsonTopLevel {
 public:
  explicit JsonTopLevel(const simdjson::dom::element& root) : root_(root) {}
  bool isArray(std::string_view name) const;
  bool isTrue(std::string_view name) const;
  // Empty when there is no such member or it is no text.
  std::string text(std::string_view name) const;

 private:
  const simdjson::dom::element& root_;
};

class JsonReader {
 public:
  using Glance = std::function<void(const JsonTopLevel&)>;

  // maxNesting: how many arrays and objects may stand in one another, 1 to 1000.
  explicit JsonReader(std::size_t maxNesting);
  JsonReader(JsonReader&&) noexcept;
  JsonReader& operator=(JsonReader&&) noexcept;
  ~JsonReader();

  // The whole of `text` must be one document by RFC 8259, with or without a byte order mark.
  // `value` is replaced, by null when the text is refused. `text` may get more capacity.
  // `glance`, where given, is called once the text is known to be JSON, which takes a tenth of the
  // time; it is not called for texts that need the slower reader.
  JsonOutcome read(std::string& text, Json::Value& value, std::string& reason,
                   const Glance& glance = nullptr);

 private:
  struct Parser;

  JsonOutcome readDocument(std::string& text, Json::Value& value, std::string& reason,
                           const Glance& glance);
  JsonOutcome readSlowly(const std::string& text, std::size_t start, Json::Value& value,
                         std::string& reason) const;

  std::size_t maxNesting_;
  std::unique_ptr<Parser> parser_;
};

}  // namespace orma::rest
