#include "answer_format.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <string_view>
#include <type_traits>

namespace ormaagent {

namespace {

bool isText(const Value& value) {
  return std::holds_alternative<std::string>(value) || std::holds_alternative<UtcTime>(value);
}

bool isNone(const Value& value) { return std::holds_alternative<std::monostate>(value); }

// The shortest text that reads back to the number and cannot be taken for a whole one.
std::string realText(double number) {
  if (std::isnan(number)) return "NaN";
  if (std::isinf(number)) return number < 0 ? "-Infinity" : "Infinity";
  char digits[32];
  const std::string text(digits, std::to_chars(digits, std::end(digits), number).ptr);
  return text.find_first_not_of("-0123456789") == std::string::npos ? text + ".0" : text;
}

std::string plainText(const Value& value) {
  return std::visit(
      [](const auto& held) -> std::string {
        using Held = std::decay_t<decltype(held)>;
        if constexpr (std::is_same_v<Held, std::string>) {
          return held;
        } else if constexpr (std::is_same_v<Held, UtcTime>) {
          return held.iso;
        } else if constexpr (std::is_same_v<Held, double>) {
          return realText(held);
        } else if constexpr (std::is_same_v<Held, std::monostate>) {
          return "";
        } else {
          return std::to_string(held);
        }
      },
      value);
}

// Controls of both ranges are escaped, also those that JSON would let pass: a document may be
// looked at on a terminal.
std::string jsonText(std::string_view text) {
  std::string out = "\"";
  const std::string valid = validUtf8(text);
  for (std::size_t i = 0; i < valid.size(); ++i) {
    const auto byte = static_cast<unsigned char>(valid[i]);
    const bool c1 = byte == 0xC2 && static_cast<unsigned char>(valid[i + 1]) < 0xA0;
    if (byte < 0x20 || byte == 0x7F || c1) {
      char escaped[8];
      const unsigned code = c1 ? static_cast<unsigned char>(valid[++i]) : byte;
      std::snprintf(escaped, sizeof escaped, "\\u%04X", code);
      out += escaped;
    } else {
      if (byte == '"' || byte == '\\') out += '\\';
      out += valid[i];
    }
  }
  return out += '"';
}

// JSON has no word for the numbers that are not finite: they are texts.
std::string jsonValue(const Value& value) {
  if (isNone(value)) return "null";
  if (isText(value)) return jsonText(plainText(value));
  const auto* real = std::get_if<double>(&value);
  const std::string text = plainText(value);
  return real != nullptr && !std::isfinite(*real) ? jsonText(text) : text;
}

std::string jsonRecord(const Answer& answer, const std::vector<Value>& record) {
  std::string out = "{";
  for (std::size_t i = 0; i < record.size(); ++i) {
    if (i > 0) out += ", ";
    out += jsonText(answer.fields[i]) + ": " + jsonValue(record[i]);
  }
  return out += '}';
}

// One record a line, so that line tools can be used on long answers.
std::string jsonDocument(const Answer& answer) {
  std::string out = "{\"result\": " + std::to_string(answer.result) + ", \"records\": [";
  const char* separator = "\n  ";
  for (const auto& record : answer.records) {
    out += separator + jsonRecord(answer, record);
    separator = ",\n  ";
  }
  return out += answer.records.empty() ? "]}\n" : "\n]}\n";
}

// RFC 4180, but that controls, line breaks among them, are escaped rather than quoted.
std::string csvField(const std::string& text, CharacterSet characterSet) {
  std::string shown = displayText(text, characterSet).bytes;
  if (shown.find_first_of(",\"") == std::string::npos) return shown;
  std::string quoted = "\"";
  for (const char byte : shown) {
    if (byte == '"') quoted += '"';
    quoted += byte;
  }
  return quoted += '"';
}

std::string csvDocument(const Answer& answer, CharacterSet characterSet) {
  if (answer.fields.empty()) return "";
  std::string out;
  for (std::size_t i = 0; i < answer.fields.size(); ++i) {
    out += (i > 0 ? "," : "") + csvField(answer.fields[i], characterSet);
  }
  out += "\r\n";
  for (const auto& record : answer.records) {
    for (std::size_t i = 0; i < record.size(); ++i) {
      out += (i > 0 ? "," : "") + csvField(plainText(record[i]), characterSet);
    }
    out += "\r\n";
  }
  return out;
}

struct Cell {
  DisplayText shown;
  bool right = false;  // numbers stand to the right
};

using Row = std::vector<Cell>;

// Whether a field holds numbers, as far as the first value that there is can tell.
bool holdsNumbers(const Answer& answer, std::size_t field) {
  for (const auto& record : answer.records) {
    if (!isNone(record[field])) return !isText(record[field]);
  }
  return false;
}

Row headRow(const Answer& answer, CharacterSet characterSet) {
  Row row;
  for (std::size_t i = 0; i < answer.fields.size(); ++i) {
    row.push_back({displayText(answer.fields[i], characterSet), holdsNumbers(answer, i)});
  }
  return row;
}

Row ruleRow(const std::vector<std::size_t>& widths) {
  Row row;
  for (const std::size_t width : widths) row.push_back({{std::string(width, '-'), width}, false});
  return row;
}

// "2026-11-21T08:30:00Z" as "2026-11-21 08:30:00".
std::string tableText(const Value& value) {
  std::string text = plainText(value);
  if (!std::holds_alternative<UtcTime>(value) || text.empty()) return text;
  text.pop_back();
  std::replace(text.begin(), text.end(), 'T', ' ');
  return text;
}

Row recordRow(const std::vector<Value>& record, CharacterSet characterSet) {
  Row row;
  for (const Value& value : record) {
    row.push_back({displayText(tableText(value), characterSet), !isText(value) && !isNone(value)});
  }
  return row;
}

void indent(DisplayText& text, std::size_t columns) {
  text.bytes.insert(0, columns, ' ');
  text.width += columns;
}

void appendRow(std::string& out, const Row& row, const std::vector<std::size_t>& widths) {
  for (std::size_t i = 0; i < row.size(); ++i) {
    const std::string padding(widths[i] - row[i].shown.width, ' ');
    if (i > 0) out += "  ";
    if (row[i].right) out += padding;
    out += row[i].shown.bytes;
    if (!row[i].right && i + 1 < row.size()) out += padding;
  }
  out += '\n';
}

std::string tableDocument(const Answer& answer, CharacterSet characterSet) {
  if (answer.fields.empty()) return "";
  std::vector<Row> rows = {headRow(answer, characterSet)};
  const std::size_t shown = answer.records.size() - answer.closingRecords;
  for (std::size_t i = 0; i < shown; ++i) {
    rows.push_back(recordRow(answer.records[i], characterSet));
  }
  for (std::size_t i = 0; i < answer.depths.size(); ++i) {
    indent(rows.at(i + 1).front().shown, 2 * answer.depths[i]);
  }
  std::vector<std::size_t> widths(answer.fields.size(), 0);
  for (const Row& row : rows) {
    for (std::size_t i = 0; i < row.size(); ++i) {
      widths[i] = std::max(widths[i], row[i].shown.width);
    }
  }
  rows.insert(rows.begin() + 1, ruleRow(widths));
  std::string out;
  for (const Row& row : rows) appendRow(out, row, widths);
  return out;
}

}  // namespace

std::string formatAnswer(const Answer& answer, Format format, CharacterSet characterSet) {
  switch (format) {
    case Format::kJson:
      return jsonDocument(answer);
    case Format::kCsv:
      return csvDocument(answer, characterSet);
    default:
      return tableDocument(answer, characterSet);
  }
}

}  // namespace ormaagent
