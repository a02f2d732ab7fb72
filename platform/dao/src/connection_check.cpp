#include "orma/dao/connection_check.h"

#include <libpq-fe.h>

#include <memory>
#include <string_view>

#include "connection_settings.h"

namespace dao {
namespace {

struct FreeOptions {
  void operator()(PQconninfoOption* options) const { PQconninfoFree(options); }
};

// Whether the option stands in the text and is a secret.
bool isGivenSecret(const PQconninfoOption& option) {
  const std::string_view keyword = option.keyword;
  const bool secret = keyword == "password" || keyword == "sslpassword";
  return secret && option.val != nullptr && *option.val != '\0';
}

}  // namespace

bool connectionHoldsPassword(const orma::Configuration& configuration) {
  ConnectionSettings settings;
  try {
    settings = connectionSettings(configuration);
  } catch (const DatabaseError&) {
    return false;
  }
  if (settings.server != kDbServerPostgresql) return false;
  const std::unique_ptr<PQconninfoOption, FreeOptions> options(
      PQconninfoParse(settings.target.c_str(), nullptr));
  if (!options) return true;
  for (const PQconninfoOption* option = options.get(); option->keyword != nullptr; ++option) {
    if (isGivenSecret(*option)) return true;
  }
  return false;
}

}  // namespace dao
