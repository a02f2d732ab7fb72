#include "text_double.h"

#include <cstring>
#include <utility>

#include "orma/text/text.h"
#include "outage.h"
#include "platform.h"

// The platform's own, under the name that its source is compiled with here.
namespace OrmaGlobalUtils {
void platformCodeSetConvert(const std::string& from, const std::string& to,
                            const std::string& input, std::string& output);
}

namespace emf::doubles {

bool operator==(const Conversion& a, const Conversion& b) {
  return a.from == b.from && a.to == b.to && a.input == b.input;
}

std::ostream& operator<<(std::ostream& out, const Conversion& conversion) {
  return out << conversion.from << " to " << conversion.to << ": \"" << conversion.input << '"';
}

void TextDouble::language(const std::string& word) {
  std::lock_guard lock(mutex_);
  language_ = word;
}

void TextDouble::characterSetSwitch(int value) {
  std::lock_guard lock(mutex_);
  characterSetSwitch_ = value;
}

void TextDouble::conversionGives(Converter converter) {
  std::lock_guard lock(mutex_);
  converter_ = std::move(converter);
}

void TextDouble::convertsTruly() {
  std::lock_guard lock(mutex_);
  convertsTruly_ = true;
}

void TextDouble::formattingFails(const std::string& left) {
  std::lock_guard lock(mutex_);
  failureText_ = left;
}

std::vector<Conversion> TextDouble::conversions() const {
  std::lock_guard lock(mutex_);
  return conversions_;
}

int TextDouble::switchReads() const {
  std::lock_guard lock(mutex_);
  return switchReads_;
}

std::vector<FormatBounds> TextDouble::formats() const {
  std::lock_guard lock(mutex_);
  return formats_;
}

void TextDouble::reset() {
  std::lock_guard lock(mutex_);
  language_ = "en_US";
  characterSetSwitch_ = 0;
  switchReads_ = 0;
  converter_ = nullptr;
  convertsTruly_ = false;
  failureText_.reset();
  conversions_.clear();
  formats_.clear();
}

std::string TextDouble::language() const {
  std::lock_guard lock(mutex_);
  return language_;
}

int TextDouble::readSwitch() {
  std::lock_guard lock(mutex_);
  ++switchReads_;
  return characterSetSwitch_;
}

std::string TextDouble::convert(const Conversion& conversion) {
  Converter converter;
  bool truly = false;
  {
    std::lock_guard lock(mutex_);
    conversions_.push_back(conversion);
    converter = converter_;
    truly = convertsTruly_;
  }
  if (truly) {
    std::string converted;
    OrmaGlobalUtils::platformCodeSetConvert(conversion.from, conversion.to, conversion.input,
                                            converted);
    return converted;
  }
  if (converter) return converter(conversion.input);
  return conversion.from + ">" + conversion.to + ":" + conversion.input;
}

std::optional<std::string> TextDouble::recordFormat(const FormatBounds& bounds) {
  std::lock_guard lock(mutex_);
  formats_.push_back(bounds);
  if (outage("formatting", 1) == 0) return "cut";
  return failureText_;
}

}  // namespace emf::doubles

using emf::doubles::platform;

namespace Ormacommon {
OrmaMsg* OrmaMsg::instance() {
  static auto* message = new OrmaMsg;
  return message;
}
std::string OrmaMsg::getLanguage() {
  platform().journal.note("language");
  return platform().text.language();
}
}  // namespace Ormacommon

namespace NS_ORMACORBA {
CorbaAgentConfig* CorbaAgentConfig::Instance() {
  static auto* config = new CorbaAgentConfig;
  return config;
}
int CorbaAgentConfig::GetCharacterSetSwitch() { return platform().text.readSwitch(); }
}  // namespace NS_ORMACORBA

namespace OrmaGlobalUtils {
void OrmaCodeSetConvert(const std::string& from, const std::string& to, const std::string& input,
                        std::string& output) {
  output = platform().text.convert({from, to, input});
}
}  // namespace OrmaGlobalUtils

int snprintf_s(char* dest, std::size_t destMax, std::size_t count, const char* format, ...) {
  if (const auto left = platform().text.recordFormat({destMax, count, format})) {
    std::memcpy(dest, left->c_str(), left->size() + 1);
    return -1;
  }
  va_list arguments;
  va_start(arguments, format);
  const int written = vsnprintf_s(dest, destMax, count, format, arguments);
  va_end(arguments);
  return written;
}
