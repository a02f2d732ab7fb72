#include <memory>

#include "orma/bundle/configuration.h"
#include "orma/text/text.h"

namespace {

// What one thread has read from the installed configuration. Each text of a REST answer asks for
// the switch, so the values are looked up once for each configuration that is installed. The
// pointer keeps its configuration alive: another one can never have the same address.
struct AgentSettings {
  std::shared_ptr<const orma::Configuration> source;
  std::string language;
  int characterSetSwitch = 0;
};

const AgentSettings& currentSettings() {
  thread_local AgentSettings settings;
  auto current = orma::Configuration::current();
  if (settings.source != current) {
    settings.language = current->text("text.language");
    settings.characterSetSwitch = static_cast<int>(current->integer("text.characterSetSwitch"));
    settings.source = std::move(current);
  }
  return settings;
}

}  // namespace

namespace Ormacommon {

OrmaMsg* OrmaMsg::instance() {
  static OrmaMsg message;
  return &message;
}

std::string OrmaMsg::getLanguage() { return currentSettings().language; }

}  // namespace Ormacommon

namespace NS_ORMACORBA {

CorbaAgentConfig* CorbaAgentConfig::Instance() {
  static CorbaAgentConfig config;
  return &config;
}

int CorbaAgentConfig::GetCharacterSetSwitch() { return currentSettings().characterSetSwitch; }

}  // namespace NS_ORMACORBA
