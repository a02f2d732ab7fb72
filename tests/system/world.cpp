#include "world.h"

#include <json/writer.h>

#include <fstream>
#include <sstream>

#include "documents.h"

namespace systemtest {

World::World() {
  const Outcome generated =
      Process({ORMASIM, "generate", "--elements", "50", "--seed", "7", "--db", database_.string()})
          .finish();
  EXPECT_EQ(generated.status, 0) << generated.err;
}

void World::serve(const std::vector<std::string>& options) {
  std::vector<std::string> words = {
      ORMASIM, "serve", "--db", database_.string(), "--agent-config", configuration_.string()};
  words.insert(words.end(), options.begin(), options.end());
  simulator_ = std::make_unique<Process>(words);
  simulator_->awaitOutput("\n");
}

void World::serveWithFaults(const std::string& script) {
  serve({"--faults", directory_.write("faults.json", script).string()});
}

void World::configure(const std::function<void(Json::Value&)>& change) {
  std::ostringstream text;
  text << std::ifstream(configuration_).rdbuf();
  Json::Value document = jsonOf(text.str());
  change(document);
  std::ofstream(configuration_) << Json::writeString(Json::StreamWriterBuilder(), document);
}

std::unique_ptr<Process> World::startAgent(const std::vector<std::string>& words,
                                           ProcessSetup setup) {
  std::vector<std::string> all = {ORMAAGENT};
  all.insert(all.end(), words.begin(), words.end());
  if (setup.environment.empty()) {
    setup.environment = {"ORMAAGENT_CONFIG=" + configuration_.string()};
  }
  return std::make_unique<Process>(all, setup);
}

Outcome World::agent(const std::vector<std::string>& words, ProcessSetup setup) {
  return startAgent(words, std::move(setup))->finish();
}

Json::Value scriptedService(const std::string& factory) {
  Json::Value service;
  service["bundle"] = "scripted";
  service["service"] = factory;
  service["library"] = SCRIPTED_SERVICES;
  service["factory"] = factory;
  return service;
}

}  // namespace systemtest
