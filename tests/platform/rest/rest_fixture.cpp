#include "rest_fixture.h"

#include <json/reader.h>
#include <json/writer.h>
#include <stdlib.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "orma/bundle/configuration.h"
#include "orma/log/log_sink.h"

namespace {

void installConfiguration(const Json::Value& root, const std::string& directory) {
  std::vector<orma::ConfigProblem> problems;
  const auto configuration = orma::Configuration::parse(
      Json::writeString(Json::StreamWriterBuilder(), root), "test.json", directory, problems);
  for (const auto& problem : problems) ADD_FAILURE() << problem.where << ": " << problem.what;
  if (!configuration) return;
  orma::configureLog(*configuration);
  orma::Configuration::install(configuration);
}

std::string makeScratchDirectory() {
  std::string name = (std::filesystem::temp_directory_path() / "rest_test.XXXXXX").string();
  return ::mkdtemp(name.data()) != nullptr ? name : std::string();
}

}  // namespace

RestTest::RestTest() : directory_(makeScratchDirectory()) {}

RestTest::~RestTest() {
  Json::Value silent;
  silent["log"]["stderr"] = false;
  installConfiguration(silent, directory_);
  std::filesystem::remove_all(directory_);
}

void RestTest::configure(const Json::Value& rest) {
  Json::Value root;
  root["log"]["stderr"] = false;
  root["log"]["format"] = "json";
  root["log"]["file"] = "trace" + std::to_string(++configured_) + ".log";
  root["rest"] = rest;
  installConfiguration(root, directory_);
}

void RestTest::configureBaseUrl(const std::string& baseUrl) {
  Json::Value rest;
  rest["baseUrl"] = baseUrl;
  configure(rest);
}

std::vector<Trace> RestTest::traces() const {
  orma::flushLog();
  std::ifstream log(file("trace" + std::to_string(configured_) + ".log"));
  std::vector<Trace> found;
  for (std::string line; std::getline(log, line);) {
    const Json::Value entry = json(line);
    found.push_back({entry["level"].asString(), entry["file"].asString(),
                     entry["function"].asString(), entry["text"].asString()});
  }
  return found;
}

std::string RestTest::failureTrace() const {
  const auto found = traces();
  if (found.size() != 1) {
    ADD_FAILURE() << "expected one trace, found " << found.size();
    return std::string();
  }
  EXPECT_EQ(found[0].level, "error");
  EXPECT_EQ(found[0].file, "restclient");
  EXPECT_EQ(found[0].function, "unknown");
  return found[0].text;
}

std::string RestTest::write(const std::string& name, const std::string& content) const {
  std::ofstream(file(name), std::ios::binary) << content;
  return file(name);
}

std::string RestTest::writeSecret(const std::string& name, const std::string& content,
                                  unsigned mode) const {
  const std::string path = write(name, content);
  EXPECT_EQ(::chmod(path.c_str(), mode), 0);
  return path;
}

Nimbola::RestReq get(const std::string& path) {
  Nimbola::RestReq request = NS_UTIL::MakeRestReq();
  request.url = path;
  return request;
}

Nimbola::RestReq post(const std::string& path, const Json::Value& body) {
  Nimbola::RestReq request = get(path);
  request.method = Nimbola::kMethodBody;
  request.body = body;
  return request;
}

Json::Value json(const std::string& text) {
  Json::Value value;
  std::string problem;
  std::istringstream stream(text);
  EXPECT_TRUE(Json::parseFromStream(Json::CharReaderBuilder(), stream, &value, &problem))
      << problem;
  return value;
}
