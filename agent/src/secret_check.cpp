#include "secret_check.h"

#include <string_view>

#include "orma/bundle/secret.h"
#include "orma/dao/connection_check.h"

namespace ormaagent {

namespace {

using orma::SecretReaders;

struct SecretFile {
  const char* key;
  SecretReaders readers;
};

// libpq takes a password file only when nobody but its owner can read it.
constexpr SecretFile kSecretFiles[] = {
    {"rest.token.file", SecretReaders::kOwnerAndGroup},
    {"rest.tls.keyFile", SecretReaders::kOwnerAndGroup},
    {"database.passwordFile", SecretReaders::kOwner},
};

bool baseUrlHoldsPassword(const orma::Configuration& configuration) {
  const std::string text = configuration.text("rest.baseUrl");
  const auto scheme = text.find("://");
  const auto at = text.rfind('@');  // also behind a "/", which a password may hold by mistake
  const auto start = scheme == std::string::npos ? 0 : scheme + 3;
  return at != std::string::npos && at >= start && text.find(':', start) < at;
}

struct SecretValue {
  const char* key;
  bool (*isHeld)(const orma::Configuration&);
  const char* remedy;
};

constexpr SecretValue kSecretValues[] = {
    {"rest.baseUrl", baseUrlHoldsPassword, "or take the password out of it"},
    {"database.connection", dao::connectionHoldsPassword,
     "or move the password to database.passwordFile"},
};

}  // namespace

std::vector<orma::ConfigProblem> secretProblems(const orma::Configuration& configuration,
                                                const std::string& file) {
  std::vector<orma::ConfigProblem> problems;
  const std::string place = file + ": ";
  for (const SecretFile& row : kSecretFiles) {
    const std::string name = configuration.path(row.key);
    if (name.empty()) continue;
    const std::string fault = orma::secretFileFault(name, row.readers);
    if (!fault.empty()) problems.push_back({place + row.key, name + " " + fault});
  }
  const std::string own = orma::secretFileFault(file, SecretReaders::kOwnerAndGroup);
  for (const SecretValue& row : kSecretValues) {
    if (own.empty() || !row.isHeld(configuration)) continue;
    problems.push_back({place + row.key,
                        "holds a password, and the file " + own + ", " + std::string(row.remedy)});
  }
  return problems;
}

}  // namespace ormaagent
