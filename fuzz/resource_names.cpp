// The plug-in's own reading of names: segments, lists and the labels that are made of them.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <string>
#include <vector>

#include "accessresources.h"
#include "platform.h"
#include "resourcenames.h"

namespace {

void useSegments(const std::string& fdn) {
  std::map<std::string, std::string> segments;
  ParseFdnSegments(segments, fdn);
  for (const auto& [key, value] : segments) {
    if (fdn.find(key + "=" + value) == std::string::npos) std::abort();
  }
}

void useList(const std::string& text) {
  std::vector<std::string> pieces;
  const bool whole = SplitFdnList(text, pieces, ',');
  const auto separators = static_cast<std::size_t>(std::count(text.begin(), text.end(), ','));
  if (whole && pieces.size() != separators + 1) std::abort();
  for (const std::string& piece : pieces) {
    if (piece.empty() || piece.front() == ' ' || piece.back() == ' ') std::abort();
  }
  std::vector<std::string> other;
  SplitFdnList(text, other, '-');
  if (text.find("shelf") != std::string::npos && other.size() > 1) std::abort();
}

void useLabel(const std::string& fdn) {
  static_cast<void>(BuildAccessLabel(fdn));
  AccessResources resources;
  resources[fdn].fdn = fdn;
  Json::Value frames;
  Json::Value cards;
  FillAccessQuery(resources, frames, cards);
  if (!frames.isNull() && !cards.isNull()) std::abort();  // a name is of one kind
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  emf::doubles::platform().reset();
  emf::doubles::platform().text.convertsTruly();
  useSegments(text);
  useList(text);
  useLabel(text);
  return 0;
}
