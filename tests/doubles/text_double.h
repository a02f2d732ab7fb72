// Texts: the language, the character-set switch, the conversions asked for and the bounds given
// to snprintf_s.
//
//   platform().text.characterSetSwitch(1);
//   platform().text.conversionGives([](const std::string& text) { return "<" + text + ">"; });
//   platform().text.formattingFails("NE=");  // what stays in the buffer then
//
// Thread-safety: thread-safe.
#pragma once

#include <functional>
#include <mutex>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace emf::doubles {

struct Conversion {
  std::string from;
  std::string to;
  std::string input;
};
bool operator==(const Conversion& a, const Conversion& b);
std::ostream& operator<<(std::ostream& out, const Conversion& conversion);

struct FormatBounds {
  std::size_t destMax = 0;
  std::size_t count = 0;
  std::string format;
};

class TextDouble {
 public:
  using Converter = std::function<std::string(const std::string&)>;

  // "en_US" after a reset.
  void language(const std::string& word);
  // 0 after a reset.
  void characterSetSwitch(int value);
  // What a conversion makes of its input; after a reset "from>to:input".
  void conversionGives(Converter converter);
  // Conversions are the platform's own, until the reset.
  void convertsTruly();
  // Every snprintf_s writes `left` into its buffer and returns -1, until the reset.
  void formattingFails(const std::string& left);

  std::vector<Conversion> conversions() const;
  // How often the switch was read.
  int switchReads() const;
  std::vector<FormatBounds> formats() const;
  void reset();

  std::string language() const;
  int readSwitch();
  std::string convert(const Conversion& conversion);
  // Records the bounds; the text to leave behind when formatting is to fail.
  std::optional<std::string> recordFormat(const FormatBounds& bounds);

 private:
  mutable std::mutex mutex_;
  std::string language_ = "en_US";
  int characterSetSwitch_ = 0;
  int switchReads_ = 0;
  Converter converter_;
  bool convertsTruly_ = false;
  std::optional<std::string> failureText_;
  std::vector<Conversion> conversions_;
  std::vector<FormatBounds> formats_;
};

}  // namespace emf::doubles
