#include "agent_config.h"

#include <json/json.h>

#include <cstdio>
#include <filesystem>
#include <system_error>

#include "build_paths.h"
#include "error.h"
#include "files.h"

namespace ormasim {
namespace {

namespace fs = std::filesystem;

constexpr unsigned kReadableByAll = 0644;
constexpr unsigned kReadableByOwner = 0600;

struct BundleRow {
  const char* bundle;
  const char* service;
  const char* library;
  const char* factory;
};

// The log service comes first: the others find it when they start.
constexpr BundleRow kBundles[] = {
    {"ii_log_bundle", "ii_log_service", kLogLibrary, "_make_orma_log_service"},
    {"ii_orma_corbaagent_bundle", "ii_ormaiac_emf", "libii_ormaiac_emf.so", "_make_ii_ormaiac_emf"},
};

fs::path programDirectory() {
  std::error_code ignored;
  return fs::read_symlink("/proc/self/exe", ignored).parent_path();
}

// Where the program is installed or built, the libraries are beside it; elsewhere the loader's own
// search has to find them.
std::string libraryPath(const char* name) {
  std::error_code ignored;
  for (const char* directory : {kLibraryDirectory, "../lib"}) {
    const fs::path path = (programDirectory() / directory / name).lexically_normal();
    if (fs::exists(path, ignored)) return path.string();
  }
  return name;
}

// The installation root, which has the error texts and the access device types below etc/; empty
// when it is not there.
fs::path installationRoot() {
  std::error_code ignored;
  const fs::path share = (programDirectory() / kShareDirectory).lexically_normal();
  return fs::is_directory(share / "etc/nbires", ignored) ? share : fs::path();
}

Json::Value makeConfig(const AgentConfigSettings& settings) {
  Json::Value config(Json::objectValue);
  config["rest"]["baseUrl"] = "http://127.0.0.1:" + std::to_string(settings.httpPort);
  if (!settings.token.empty()) {
    config["rest"]["token"]["file"] = fs::absolute(settings.file + ".token").string();
  }
  config["faultServer"]["host"] = "127.0.0.1";
  config["faultServer"]["port"] = settings.faultPort;
  if (settings.explicitTagging) config["faultServer"]["tagging"] = "explicit";
  config["database"]["connection"] = "sqlite:" + fs::canonical(settings.databaseFile).string();
  config["bundles"] = Json::arrayValue;
  for (const BundleRow& row : kBundles) {
    Json::Value bundle(Json::objectValue);
    bundle["bundle"] = row.bundle;
    bundle["service"] = row.service;
    bundle["library"] = libraryPath(row.library);
    bundle["factory"] = row.factory;
    config["bundles"].append(bundle);
  }
  config["items"]["IsReportSubnet"] = 0;
  const fs::path root = installationRoot();
  if (root.empty()) {
    std::fprintf(stderr, "ormasim: no error texts at %s beside the program; the agent has none\n",
                 kShareDirectory);
  } else {
    config["installation"]["environment"] = (root / "bin").string();
    config["installation"]["root"] = root.string();
  }
  return config;
}

}  // namespace

void writeAgentConfig(const AgentConfigSettings& settings) {
  Json::StreamWriterBuilder builder;
  builder["indentation"] = "  ";
  builder["emitUTF8"] = true;
  builder["enableYAMLCompatibility"] = true;  // "key": value, as people write it
  const std::string text = Json::writeString(builder, makeConfig(settings)) + "\n";
  if (!settings.token.empty()) {
    writeFile(settings.file + ".token", settings.token + "\n", kReadableByOwner);
  }
  writeFile(settings.file, text, kReadableByAll);
}

}  // namespace ormasim
