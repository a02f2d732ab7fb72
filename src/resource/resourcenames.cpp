#include "resourcenames.h"

#include <cstdio>

#include "orma/text/text.h"

namespace {

constexpr char kRestCharset[] = "UTF-8";
constexpr std::size_t kNeFdnBytes = 32;  // "NE=", sign, 19 digits, NUL

void addSegment(std::map<std::string, std::string>& segments, const std::string& piece) {
  const std::size_t equals = piece.find('=');
  if (equals != std::string::npos) segments[piece.substr(0, equals)] = piece.substr(equals + 1);
}

// Appends the trimmed piece unless it is empty; whether it was not.
bool appendTrimmed(std::string piece, std::vector<std::string>& out) {
  if (!TrimBlanks(piece)) return false;
  out.push_back(piece);
  return true;
}

}  // namespace

std::string MakeNeFdn(std::int64_t resourceId) {
  char fdn[kNeFdnBytes];
  std::snprintf(fdn, sizeof fdn, "NE=%ld", static_cast<long>(resourceId));
  return fdn;
}

std::string ToNorthCharset(const char* text) {
  const char* wanted = nullptr;
  switch (NS_ORMACORBA::CorbaAgentConfig::Instance()->GetCharacterSetSwitch()) {
    case 1:
      wanted = "GBK";
      break;
    case 2:
      wanted = "ISO-8859-1";
      break;
    default:
      return text;
  }
  std::string converted;
  OrmaGlobalUtils::OrmaCodeSetConvert(kRestCharset, wanted, text, converted);
  return converted;
}

void ParseFdnSegments(std::map<std::string, std::string>& segments, const std::string& fdn) {
  std::size_t start = 0;
  for (std::size_t comma = fdn.find(','); comma != std::string::npos;
       comma = fdn.find(',', start)) {
    addSegment(segments, fdn.substr(start, comma - start));
    start = comma + 1;
  }
  addSegment(segments, fdn.substr(start));
}

bool SplitFdnList(const std::string& text, std::vector<std::string>& out, char separator) {
  if (text.empty()) return false;
  if (separator == '-' && text.find("shelf") != std::string::npos) return appendTrimmed(text, out);
  std::size_t start = 0;
  for (std::size_t cut = text.find(separator); cut != std::string::npos;
       cut = text.find(separator, start)) {
    if (!appendTrimmed(text.substr(start, cut - start), out)) return false;
    start = cut + 1;
  }
  return appendTrimmed(text.substr(start), out);
}

bool TrimBlanks(std::string& text) {
  text.erase(text.find_last_not_of(' ') + 1);
  text.erase(0, text.find_first_not_of(' '));
  return !text.empty();
}
