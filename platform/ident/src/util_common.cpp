#include <algorithm>
#include <string_view>

#include "orma/ident/resource_ids.h"

namespace NS_UTIL {

std::string UtilCommon::GetMoc(const std::string& fdn) {
  const std::size_t comma = fdn.rfind(',');
  const std::string_view last =
      std::string_view(fdn).substr(comma == std::string::npos ? 0 : comma + 1);
  // Unlike an id, the key is known before the segment has a value.
  const std::size_t equals = last.find('=');
  return std::string(last.substr(0, equals == std::string_view::npos ? 0 : equals));
}

void UtilCommon::GetSplitePPDataByLine(std::map<int, std::string>& parts,
                                       const std::string& value) {
  constexpr const char* kSeparators = "-/";
  parts.clear();
  if (value.empty()) return;
  std::size_t start = 0;
  for (int number = 0; start <= value.size(); ++number) {
    const std::size_t end = std::min(value.find_first_of(kSeparators, start), value.size());
    parts.emplace(number, value.substr(start, end - start));
    start = end + 1;
  }
}

void UtilCommon::GetDataFromMap(const std::map<int, std::string>& parts, int number,
                                std::string& part) {
  const auto found = parts.find(number);
  if (found != parts.end()) part = found->second;
}

}  // namespace NS_UTIL
