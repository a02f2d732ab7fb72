#include "engine_fixture.h"

#include <json/json.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "orma/bundle/configuration.h"
#include "orma/log/log_sink.h"

namespace dao::test {
namespace {

constexpr const char* kLogFile = "dao.log";

void install(const Json::Value& document, const std::string& directory) {
  std::vector<orma::ConfigProblem> problems;
  auto configuration = orma::Configuration::parse(Json::FastWriter().write(document), "agent.json",
                                                  directory, problems);
  for (const auto& problem : problems) {
    throw std::runtime_error(problem.where + ": " + problem.what);
  }
  orma::configureLog(*configuration);
  orma::Configuration::install(std::move(configuration));
}

}  // namespace

TemporaryDirectory::TemporaryDirectory() {
  std::string path = (std::filesystem::temp_directory_path() / "emf_dao_XXXXXX").string();
  if (mkdtemp(path.data()) == nullptr) throw std::runtime_error("no temporary directory");
  path_ = path;
}

TemporaryDirectory::~TemporaryDirectory() { std::filesystem::remove_all(path_); }

EngineTest::EngineTest() { configure(""); }

EngineTest::~EngineTest() {
  CEmfCommDBEngine::Destroy();
  install(Json::objectValue, "/");
}

void EngineTest::configure(const std::string& connection, int busyTimeoutMs,
                           int statementTimeoutMs) {
  Json::Value database;
  database["connection"] = connection;
  database["busyTimeoutMs"] = busyTimeoutMs;
  database["statementTimeoutMs"] = statementTimeoutMs;
  configureDatabase(database);
}

void EngineTest::configure(const std::string& connection, const std::string& passwordFile) {
  Json::Value database;
  database["connection"] = connection;
  database["passwordFile"] = passwordFile;
  configureDatabase(database);
}

void EngineTest::configureDatabase(const Json::Value& database) const {
  Json::Value document;
  document["log"]["file"] = file(kLogFile);
  document["log"]["format"] = "json";
  document["log"]["stderr"] = false;
  document["log"]["level"] = 3;
  document["database"] = database;
  install(document, directory_.path());
}

std::vector<LoggedLine> EngineTest::loggedErrors() const { return loggedLines("error"); }

std::vector<LoggedLine> EngineTest::loggedLines(const std::string& level) const {
  orma::flushLog();
  std::ifstream in(file(kLogFile));
  std::vector<LoggedLine> lines;
  for (std::string text; std::getline(in, text);) {
    Json::Value line;
    if (!Json::Reader().parse(text, line)) throw std::runtime_error("no JSON: " + text);
    if (line["level"].asString() != level) continue;
    lines.push_back({line["level"].asString(), line["file"].asString(), line["function"].asString(),
                     line["text"].asString()});
  }
  return lines;
}

std::vector<std::string> EngineTest::loggedTexts() const {
  std::vector<std::string> texts;
  for (const LoggedLine& line : loggedErrors()) texts.push_back(line.text);
  return texts;
}

}  // namespace dao::test
