// Texts: resource file lines, trimming, the language and the character sets.
//
// Thread-safety: thread-safe; OrmaGetLine on distinct files and buffers.
#pragma once

#include <cstdio>
#include <string>

#include "orma/bundle/export.h"
#include "orma/text/secure_text.h"

// Size of the key and the value buffer that OrmaGetLine's caller must give.
constexpr std::size_t kOrmaLineBufferBytes = 2048;

// Reads the next line of a resource file: key, "=", value, blanks trimmed, "#" starts a comment
// line. 1: `key` and `value` hold a pair; 0: end of file or a read error; 2: the line held no
// pair, and the buffers stay as they were. A longer key or value than its buffer is cut, and the
// rest of the line is passed over.
ORMA_API int OrmaGetLine(char* key, char* value, std::FILE* file);

// Trims blanks, tabs and line ends at both ends, in place; null is ignored.
ORMA_API void OrmaTrim(char* text);

namespace Ormacommon {
class ORMA_API OrmaMsg {
 public:
  static OrmaMsg* instance();
  // The language word, "zh_CN" or "en_US" ("text.language").
  std::string getLanguage();

 private:
  OrmaMsg() = default;
};
}  // namespace Ormacommon

namespace NS_ORMACORBA {
class ORMA_API CorbaAgentConfig {
 public:
  static CorbaAgentConfig* Instance();
  // "text.characterSetSwitch": 0 UTF-8, 1 GBK, 2 ISO-8859-1.
  int GetCharacterSetSwitch();

 private:
  CorbaAgentConfig() = default;
};
}  // namespace NS_ORMACORBA

namespace OrmaGlobalUtils {
// Converts `input` from one named set to the other into `output` (replaced). A character that the
// wanted set lacks, and a byte that is no text in the given one, becomes "?". With an unknown set
// name the text is copied unchanged.
ORMA_API void OrmaCodeSetConvert(const std::string& from, const std::string& to,
                                 const std::string& input, std::string& output);
}  // namespace OrmaGlobalUtils
