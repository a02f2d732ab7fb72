#include "orma/bundle/config_items.h"

#include "orma/bundle/configuration.h"

namespace NS_BUNDLEMGR1 {

CorbaConfigItems* CorbaConfigItems::Instance() {
  static CorbaConfigItems items;
  return &items;
}

bool CorbaConfigItems::GetIntItemInfo(const std::string& name, int& value) {
  const auto configuration = orma::Configuration::current();
  const Json::Value* item = configuration->items().find(name.data(), name.data() + name.size());
  // isInt alone would also take 1.0.
  if (item == nullptr || item->type() == Json::realValue || !item->isInt()) return false;
  value = item->asInt();
  return true;
}

std::string GetORMAEnvironment() {
  return orma::Configuration::current()->path("installation.environment");
}

std::string GetORMARootPath() { return orma::Configuration::current()->path("installation.root"); }

}  // namespace NS_BUNDLEMGR1
