// The agent's configuration: one JSON file, checked against one table of keys.
//
//   std::vector<orma::ConfigProblem> problems;
//   auto configuration = orma::Configuration::load("agent.json", problems);
//   for (const auto& each : problems) std::cerr << each.where << ": " << each.what << "\n";
//   if (configuration) orma::Configuration::install(configuration);
//
// The table (configuration_keys.cpp) holds every key with type, default, range and meaning; the
// getters take its paths and give the default where the file is silent. Asking for a path that
// the table lacks, or by the wrong type, is a programming error (std::logic_error).
//
// Thread-safety: a Configuration is immutable; install and current are thread-safe.
#pragma once

#include <json/value.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "orma/bundle/export.h"

namespace orma {

enum class ConfigType { Text, Path, Integer, Boolean, Choice };

struct ConfigKey {
  const char* path;  // "rest.connectTimeoutMs"
  ConfigType type;
  const char* defaultText;  // as it would stand in the file, without quotes
  std::int64_t minimum;     // integers: the inclusive range
  std::int64_t maximum;
  const char* choices;  // choices: the words, joined by "|"
  const char* meaning;  // one line for documents and messages
};

// Every key, in the order of the documents.
ORMA_API const std::vector<ConfigKey>& configurationKeys();

struct ConfigProblem {
  std::string where;  // "agent.json:12:3" for syntax, "agent.json: rest.port" for content
  std::string what;   // what is wrong and what would be right
};

// A service to load, from the "bundles" array.
struct ConfiguredService {
  std::string bundle;
  std::string service;
  std::string library;
  std::string factory;
};

class ORMA_API Configuration {
 public:
  // Null when the file cannot be read or anything in it is wrong; every problem is appended.
  static std::shared_ptr<const Configuration> load(const std::string& file,
                                                   std::vector<ConfigProblem>& problems);
  // The same for a text; `name` stands for the file in messages, `directory` for its place.
  static std::shared_ptr<const Configuration> parse(const std::string& text,
                                                    const std::string& name,
                                                    const std::string& directory,
                                                    std::vector<ConfigProblem>& problems);
  // Makes a configuration the process's own; null brings the defaults back.
  static void install(std::shared_ptr<const Configuration> configuration);
  // The installed configuration; all defaults when none was installed.
  static std::shared_ptr<const Configuration> current();

  std::string text(const char* path) const;
  // A path made absolute against the file's directory; empty stays empty.
  std::string path(const char* path) const;
  // The same for a path that stands inside another value, such as a connection text.
  std::string absolutePath(const std::string& path) const;
  std::int64_t integer(const char* path) const;
  bool boolean(const char* path) const;
  // The "items" object.
  const Json::Value& items() const;
  const std::vector<ConfiguredService>& services() const;

 private:
  Configuration();
  Json::Value root_;
  std::string directory_;
  std::vector<ConfiguredService> services_;
};

}  // namespace orma
