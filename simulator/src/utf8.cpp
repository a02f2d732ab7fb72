#include "utf8.h"

namespace ormasim {
namespace {

// Lead bytes, the length they open, and the range of the byte behind them, which is what keeps
// over-long forms, surrogates and values beyond U+10FFFF out.
struct Lead {
  unsigned char from;
  unsigned char to;
  std::size_t length;
  unsigned char secondFrom;
  unsigned char secondTo;
};

constexpr Lead kLeads[] = {
    {0x00, 0x7F, 1, 0x00, 0x00}, {0xC2, 0xDF, 2, 0x80, 0xBF}, {0xE0, 0xE0, 3, 0xA0, 0xBF},
    {0xE1, 0xEC, 3, 0x80, 0xBF}, {0xED, 0xED, 3, 0x80, 0x9F}, {0xEE, 0xEF, 3, 0x80, 0xBF},
    {0xF0, 0xF0, 4, 0x90, 0xBF}, {0xF1, 0xF3, 4, 0x80, 0xBF}, {0xF4, 0xF4, 4, 0x80, 0x8F},
};

const Lead* findLead(unsigned char byte) {
  for (const Lead& lead : kLeads) {
    if (byte >= lead.from && byte <= lead.to) return &lead;
  }
  return nullptr;
}

// The length of the character at the start of a text that is not empty; 0 when it is malformed.
std::size_t characterLength(std::string_view text) {
  const Lead* lead = findLead(static_cast<unsigned char>(text[0]));
  if (lead == nullptr || text.size() < lead->length) return 0;
  for (std::size_t i = 1; i < lead->length; ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    const unsigned char from = i == 1 ? lead->secondFrom : 0x80;
    const unsigned char to = i == 1 ? lead->secondTo : 0xBF;
    if (byte < from || byte > to) return 0;
  }
  return lead->length;
}

}  // namespace

std::size_t findInvalidUtf8(std::string_view text) {
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t length = characterLength(text.substr(at));
    if (length == 0) return at;
    at += length;
  }
  return std::string_view::npos;
}

}  // namespace ormasim
