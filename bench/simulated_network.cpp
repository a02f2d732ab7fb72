#include "simulated_network.h"

#include <sqlite3.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <vector>

#include "orma/bundle/configuration.h"

namespace {

namespace fs = std::filesystem;

std::string makeDirectory() {
  std::string path = fs::temp_directory_path() / "emf-bench.XXXXXX";
  if (::mkdtemp(path.data()) == nullptr) throw std::runtime_error("cannot make " + path);
  return path;
}

void change(const std::string& database, const std::string& statements) {
  sqlite3* handle = nullptr;
  const bool done =
      sqlite3_open_v2(database.c_str(), &handle, SQLITE_OPEN_READWRITE, nullptr) == SQLITE_OK &&
      sqlite3_exec(handle, statements.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK;
  const std::string reason = sqlite3_errmsg(handle);
  sqlite3_close(handle);
  if (!done) throw std::runtime_error(reason);
}

void installConfiguration(const std::string& file) {
  std::vector<orma::ConfigProblem> problems;
  auto configuration = orma::Configuration::load(file, problems);
  if (!configuration)
    throw std::runtime_error(problems.front().where + ": " + problems.front().what);
  orma::Configuration::install(std::move(configuration));
}

}  // namespace

SimulatedNetwork::SimulatedNetwork(int elements, const std::string& changes)
    : directory_(makeDirectory()) {
  try {
    start(elements, changes);
  } catch (...) {
    fs::remove_all(directory_);
    throw;
  }
}

SimulatedNetwork::~SimulatedNetwork() {
  simulator_->signal(SIGTERM);
  simulator_->wait();
  std::error_code ignored;
  fs::remove_all(directory_, ignored);
}

void SimulatedNetwork::start(int elements, const std::string& changes) {
  const std::string database = directory_ + "/network.db";
  const auto generated = ormasim::testing::run(
      EMF_ORMASIM,
      {"generate", "--elements", std::to_string(elements), "--seed", "7", "--db", database});
  if (generated.status != 0) throw std::runtime_error(generated.errors);
  change(database, changes);
  simulator_ = std::make_unique<ormasim::testing::Process>(
      EMF_ORMASIM,
      std::vector<std::string>{"serve", "--db", database, "--agent-config", configurationFile()});
  if (simulator_->readLine().empty()) throw std::runtime_error(simulator_->errors());
  select();
}

void SimulatedNetwork::select() const { installConfiguration(configurationFile()); }

std::string SimulatedNetwork::url(const std::string& path) const {
  return orma::Configuration::current()->text("rest.baseUrl") + path;
}
