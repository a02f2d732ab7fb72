#include "log_line.h"

#include <cstdio>
#include <ctime>

#include "orma/bundle/utf8.h"

namespace orma {

namespace {

struct LevelName {
  int level;
  const char* name;
};

constexpr LevelName kLevelNames[] = {{0, "error"}, {1, "info"}, {3, "detail"}};

struct Escape {
  char character;
  const char* text;
};

constexpr Escape kShortEscapes[] = {{'\n', "\\n"}, {'\r', "\\r"}, {'\t', "\\t"}};

std::string levelName(const std::optional<int>& level) {
  if (!level) return "trace";
  for (const LevelName& row : kLevelNames) {
    if (row.level == *level) return row.name;
  }
  return std::to_string(*level);
}

std::string isoTime(std::chrono::system_clock::time_point time) {
  const auto sinceEpoch = std::chrono::floor<std::chrono::milliseconds>(time).time_since_epoch();
  const auto seconds = std::chrono::floor<std::chrono::seconds>(sinceEpoch);
  const std::time_t whole = seconds.count();
  std::tm parts{};
  gmtime_r(&whole, &parts);
  char text[32];
  const std::size_t length = std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%S", &parts);
  std::snprintf(text + length, sizeof text - length, ".%03dZ",
                static_cast<int>((sinceEpoch - seconds).count()));
  return text;
}

bool isControl(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte < 0x20 || byte == 0x7F;
}

// `otherPrefix` stands before the two hexadecimal digits of a character with no short form.
void appendControl(std::string& out, char c, const char* otherPrefix) {
  for (const Escape& escape : kShortEscapes) {
    if (escape.character == c) {
      out += escape.text;
      return;
    }
  }
  constexpr char kHex[] = "0123456789ABCDEF";
  const auto byte = static_cast<unsigned char>(c);
  out += otherPrefix;
  out += kHex[byte >> 4];
  out += kHex[byte & 0xF];
}

void appendText(std::string& out, std::string_view text) {
  for (const char c : text) {
    if (isControl(c)) {
      appendControl(out, c, "\\x");
    } else {
      out += c;
    }
  }
}

void appendField(std::string& out, std::string_view field) {
  if (field.empty()) {
    out += '-';
  } else {
    appendText(out, field);
  }
}

void appendJson(std::string& out, std::string_view text) {
  out += '"';
  while (!text.empty()) {
    const char c = text.front();
    const std::size_t length = utf8SequenceLength(text);
    if (length == 0) {
      out += "\xEF\xBF\xBD";
    } else if (isControl(c)) {
      appendControl(out, c, "\\u00");
    } else {
      if (c == '"' || c == '\\') out += '\\';
      out += text.substr(0, length);
    }
    text.remove_prefix(length == 0 ? 1 : length);
  }
  out += '"';
}

void appendMember(std::string& out, const char* name, std::string_view text) {
  out += name;
  appendJson(out, text);
}

}  // namespace

std::string textLine(const LogMessage& message) {
  std::string out = isoTime(message.time);
  out += ' ' + std::to_string(message.thread) + ' ' + levelName(message.level) + ' ';
  appendField(out, message.file);
  out += ':' + std::to_string(message.line) + ' ';
  appendField(out, message.function);
  out += ' ';
  appendField(out, message.logger);
  out += ' ';
  appendText(out, message.text);
  return out;
}

std::string jsonLine(const LogMessage& message) {
  std::string out = "{\"time\":\"" + isoTime(message.time) +
                    "\",\"thread\":" + std::to_string(message.thread) + ",\"level\":\"" +
                    levelName(message.level) + '"';
  appendMember(out, ",\"logger\":", message.logger);
  appendMember(out, ",\"file\":", message.file);
  out += ",\"line\":" + std::to_string(message.line);
  appendMember(out, ",\"function\":", message.function);
  appendMember(out, ",\"text\":", message.text);
  out += '}';
  return out;
}

}  // namespace orma
