#include "support.h"

#include <json/reader.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <stdexcept>

#include "sqlite.h"

namespace ormasim::testing {

TempDirectory::TempDirectory() {
  std::string pattern = ::testing::TempDir() + "ormasim.XXXXXX";
  if (::mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary directory");
  directory_ = pattern;
}

TempDirectory::~TempDirectory() {
  std::error_code ignored;
  std::filesystem::remove_all(directory_, ignored);
}

std::string TempDirectory::write(const std::string& name, const std::string& text) const {
  std::filesystem::create_directories(std::filesystem::path(path(name)).parent_path());
  std::ofstream(path(name), std::ios::binary) << text;
  return path(name);
}

std::vector<std::string> TempDirectory::entries() const {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(directory_)) {
    names.push_back(entry.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

std::string contentOf(const std::string& file) {
  std::ostringstream text;
  text << std::ifstream(file, std::ios::binary).rdbuf();
  return text.str();
}

std::vector<std::string> query(const std::string& file, const std::string& sql) {
  Database database(file, Database::Mode::ReadOnly);
  Statement statement(database, sql);
  std::vector<std::string> rows;
  while (statement.step()) {
    std::string row;
    for (int column = 0; column < statement.columns(); ++column) {
      if (column > 0) row += '|';
      row += statement.text(column);
    }
    rows.push_back(row);
  }
  return rows;
}

std::vector<std::string> dump(const std::string& database) {
  std::vector<std::string> rows;
  for (const std::string& table :
       query(database, "SELECT name FROM sqlite_schema WHERE type = 'table' ORDER BY name")) {
    for (const std::string& row : query(database, "SELECT * FROM " + table)) {
      rows.push_back(table + ": " + row);
    }
  }
  std::sort(rows.begin(), rows.end());
  return rows;
}

Json::Value json(const std::string& text) {
  Json::CharReaderBuilder builder;
  Json::CharReaderBuilder::strictMode(&builder.settings_);
  const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
  Json::Value value;
  std::string errors;
  if (!reader->parse(text.data(), text.data() + text.size(), &value, &errors)) {
    ADD_FAILURE() << errors << " in " << text.substr(0, 200);
    return {};
  }
  return value;
}

}  // namespace ormasim::testing
