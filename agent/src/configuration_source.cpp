#include "configuration_source.h"

#include <json/value.h>
#include <json/writer.h>

#include <filesystem>
#include <string_view>

#include "secret_check.h"

namespace ormaagent {

namespace {

using orma::ConfigType;
using orma::Configuration;

Json::Value valueOf(const Configuration& configuration, const orma::ConfigKey& key) {
  switch (key.type) {
    case ConfigType::Integer:
      return static_cast<Json::Int64>(configuration.integer(key.path));
    case ConfigType::Boolean:
      return configuration.boolean(key.path);
    case ConfigType::Path:
      return configuration.path(key.path);
    default:
      return configuration.text(key.path);
  }
}

void place(Json::Value& document, std::string_view path, Json::Value value) {
  Json::Value* section = &document;
  for (auto dot = path.find('.'); dot != std::string_view::npos; dot = path.find('.')) {
    section = &(*section)[std::string(path.substr(0, dot))];
    path.remove_prefix(dot + 1);
  }
  (*section)[std::string(path)] = std::move(value);
}

// The document that a configuration could have been read from. The file is not read a second
// time: it may have changed, or be a pipe.
Json::Value documentOf(const Configuration& configuration) {
  Json::Value document(Json::objectValue);
  for (const orma::ConfigKey& key : orma::configurationKeys()) {
    place(document, key.path, valueOf(configuration, key));
  }
  document["items"] = configuration.items();
  for (const orma::ConfiguredService& service : configuration.services()) {
    Json::Value& entry = document["bundles"].append(Json::Value(Json::objectValue));
    entry["bundle"] = service.bundle;
    entry["service"] = service.service;
    entry["library"] = service.library;
    entry["factory"] = service.factory;
  }
  return document;
}

}  // namespace

std::shared_ptr<const Configuration> loadConfiguration(const std::string& file,
                                                       std::optional<int> logLevel,
                                                       std::vector<orma::ConfigProblem>& problems) {
  auto configuration = Configuration::load(file, problems);
  if (!configuration) return nullptr;
  const std::vector<orma::ConfigProblem> open = secretProblems(*configuration, file);
  problems.insert(problems.end(), open.begin(), open.end());
  if (!open.empty()) return nullptr;
  if (!logLevel) return configuration;
  Json::Value document = documentOf(*configuration);
  place(document, "log.level", *logLevel);
  return Configuration::parse(Json::writeString(Json::StreamWriterBuilder(), document), file,
                              std::filesystem::path(file).parent_path().string(), problems);
}

}  // namespace ormaagent
