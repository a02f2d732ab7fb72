#include "documents.h"

#include <json/reader.h>

#include <map>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <utility>

namespace systemtest {

namespace {

// A line of a table is cut at runs of two blanks or more; no value of these tests holds one inside.
std::vector<std::string> tableFields(const std::string& line) {
  std::vector<std::string> fields;
  std::size_t at = line.find_first_not_of(' ');
  while (at != std::string::npos) {
    const std::size_t gap = line.find("  ", at);
    fields.push_back(line.substr(at, gap - at));
    at = gap == std::string::npos ? gap : line.find_first_not_of(' ', gap);
  }
  return fields;
}

Rows tableRows(const std::string& document) {
  Rows rows;
  std::istringstream lines(document);
  std::string line;
  for (int number = 0; std::getline(lines, line); ++number) {
    if (number == 1) {
      if (line.find_first_not_of("- ") != std::string::npos) throw std::runtime_error("no rule");
    } else {
      rows.push_back(tableFields(line));
    }
  }
  return rows;
}

Rows csvRows(const std::string& document) {
  Rows rows;
  std::vector<std::string> row = {""};
  bool quoted = false;
  for (std::size_t i = 0; i < document.size(); ++i) {
    const char byte = document[i];
    if (byte == '"' && quoted && document.compare(i, 2, "\"\"") == 0) {
      row.back() += document[++i];
    } else if (byte == '"') {
      quoted = !quoted;
    } else if (byte == ',' && !quoted) {
      row.emplace_back();
    } else if (!quoted && document.compare(i, 2, "\r\n") == 0) {
      rows.push_back(std::exchange(row, std::vector<std::string>{""}));
      ++i;
    } else {
      row.back() += byte;
    }
  }
  if (quoted || row != std::vector<std::string>{""}) throw std::runtime_error("cut CSV");
  return rows;
}

// jsoncpp sorts the members, so their order is read off the text.
std::vector<std::string> memberOrder(const std::string& document, const Json::Value& record) {
  std::map<std::size_t, std::string> byPlace;
  for (const std::string& name : record.getMemberNames()) {
    byPlace.emplace(document.find("\"" + name + "\": "), name);
  }
  std::vector<std::string> names;
  for (const auto& entry : byPlace) names.push_back(entry.second);
  return names;
}

Rows jsonRows(const std::string& document) {
  Rows rows;
  const Json::Value root = jsonOf(document);
  for (const Json::Value& record : root["records"]) {
    const auto names = memberOrder(document.substr(document.find("\"records\"")), record);
    if (rows.empty()) rows.push_back(names);
    std::vector<std::string> row;
    for (const std::string& name : names) row.push_back(record[name].asString());
    rows.push_back(std::move(row));
  }
  return rows;
}

}  // namespace

Json::Value jsonOf(const std::string& document) {
  Json::CharReaderBuilder builder;
  Json::CharReaderBuilder::strictMode(&builder.settings_);
  const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
  Json::Value root;
  std::string errors;
  if (!reader->parse(document.data(), document.data() + document.size(), &root, &errors)) {
    throw std::runtime_error(errors + document);
  }
  return root;
}

Rows rowsOf(const std::string& format, const std::string& document) {
  if (format == "table") return tableRows(document);
  if (format == "csv") return csvRows(document);
  return jsonRows(document);
}

}  // namespace systemtest
