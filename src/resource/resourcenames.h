// Resource names: FDN texts, and the conversion of REST texts to the northbound character set.
//
// Thread-safety: thread-safe on distinct results.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

// "NE=" and the id in decimal.
std::string MakeNeFdn(std::int64_t resourceId);

// A text of a REST answer (UTF-8), up to its first NUL, in the configured northbound character set.
// The setting is read at every call.
std::string ToNorthCharset(const char* text);

// Adds the key=value segments of an FDN to `segments`; a later value of a key replaces an earlier
// one, a piece without "=" is skipped.
void ParseFdnSegments(std::map<std::string, std::string>& segments, const std::string& fdn);

// Cuts a text at `separator` and appends the trimmed pieces to `out`. False at the first empty
// piece, which ends the walk, and for an empty text. With separator "-" a text that contains
// "shelf" is one piece.
bool SplitFdnList(const std::string& text, std::vector<std::string>& out, char separator);

// Removes blanks (the space character only) at both ends; whether anything remains.
bool TrimBlanks(std::string& text);
