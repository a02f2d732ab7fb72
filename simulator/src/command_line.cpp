#include "command_line.h"

#include <CLI/CLI.hpp>

#include <chrono>
#include <cstdio>
#include <exception>
#include <optional>
#include <string>
#include <vector>

#include "alarms.h"
#include "build_paths.h"
#include "error.h"
#include "generate.h"
#include "import.h"
#include "manual.h"
#include "port_status.h"
#include "progress.h"
#include "serve.h"
#include "stop_signals.h"

namespace ormasim {
namespace {

constexpr int kDone = 0;
constexpr int kFailed = 1;
constexpr int kUsage = 2;

struct Options {
  GenerateOptions generate;
  ServeOptions serve;
  std::vector<std::string> files;
  std::string database;
  std::string port;
  std::string states;
  RaiseOptions raise;
  bool force = false;
};

void runGenerate(const Options& options) {
  interruptWorkOnSignals();
  generateFile(options.database, options.generate, options.force);
  std::fprintf(stderr, "ormasim: %llu elements are in %s\n",
               static_cast<unsigned long long>(options.generate.elements),
               options.database.c_str());
}

void runImport(const Options& options) {
  const ImportSummary summary =
      importFiles(options.files, options.database, options.generate.equipped);
  std::fprintf(stderr, "ormasim: %zu networks with %zu elements and %zu links are in %s%s\n",
               summary.networks, summary.elements, summary.links, options.database.c_str(),
               summary.replaced ? ", in place of what it held" : "");
}

void runRaise(const Options& options) {
  std::uint64_t raised = 0;
  if (options.raise.rate == 0) {
    raised = raiseAlarms(options.database, options.raise);
  } else {
    const StopSignals signals;
    raised = raiseSteadily(
        options.database, options.raise,
        [&signals](std::chrono::milliseconds time) { return signals.cameWithin(time); });
  }
  std::fprintf(stderr, "ormasim: %llu alarms are raised in %s\n",
               static_cast<unsigned long long>(raised), options.database.c_str());
}

void runServe(const Options& options) {
  ServeOptions serveOptions = options.serve;
  serveOptions.databaseFile = options.database;
  serve(serveOptions);
}

void runStatus(const Options& options) {
  const std::optional<PortStates> states = statesOf(options.states);
  const std::string line = portStatus(options.database, *portOf(options.port), states);
  if (std::printf("%s\n", line.c_str()) < 0 || std::fflush(stdout) != 0) {
    throw SimError("cannot write to standard output");
  }
}

void addDatabase(CLI::App& command, Options& options) {
  command.add_option("--db", options.database, "The inventory database, an SQLite file")
      ->required()
      ->type_name("FILE");
}

void addEquipped(CLI::App& command, Options& options) {
  command
      .add_option("--equipped", options.generate.equipped,
                  "Elements that get shelves, the first ones [200]")
      ->type_name("N")
      ->check(CLI::Range(std::uint64_t{0}, kMaxElements));
}

CLI::App& addGenerate(CLI::App& app, Options& options) {
  CLI::App& command = *app.add_subcommand("generate", "Make a network, the same for the same seed");
  command.add_option("--elements", options.generate.elements, "Number of network elements")
      ->required()
      ->type_name("N")
      ->check(CLI::Range(std::uint64_t{0}, kMaxElements));
  command.add_option("--seed", options.generate.seed, "Seed of the generator [1]")->type_name("S");
  addEquipped(command, options);
  command.add_option("--alarms", options.generate.alarms, "Current alarms [a quarter of N]")
      ->type_name("N")
      ->check(CLI::Range(std::uint64_t{0}, kMaxAlarms));
  command
      .add_option("--definitions", options.generate.definitions,
                  "Alarm definitions, at least [those of the tables]")
      ->type_name("N")
      ->check(CLI::Range(std::uint64_t{0}, kMaxDefinitions));
  addDatabase(command, options);
  command.add_flag("--force", options.force, "Replace the file if it exists");
  return command;
}

CLI::App& addImport(CLI::App& app, Options& options) {
  CLI::App& command = *app.add_subcommand(
      "import", "Fill a database with networks from GraphML files, in place of what it holds");
  command.add_option("files", options.files, "GraphML files")->required()->type_name("FILE");
  addEquipped(command, options);
  addDatabase(command, options);
  return command;
}

CLI::App& addServe(CLI::App& app, Options& options) {
  CLI::App& command =
      *app.add_subcommand("serve",
                          "Serve a database as the platform's REST services and its fault server "
                          "on 127.0.0.1");
  addDatabase(command, options);
  command.add_option("--http-port", options.serve.httpPort, "Port for REST; 0: a free one [0]")
      ->type_name("P")
      ->check(CLI::Range(0, 65535));
  command
      .add_option("--fault-port", options.serve.faultPort,
                  "Port of the fault server; 0: a free one [0]")
      ->type_name("P")
      ->check(CLI::Range(0, 65535));
  command
      .add_option("--frame-items", options.serve.frameItems,
                  "Alarms in a frame of the fault server [1000]")
      ->type_name("N")
      ->check(CLI::Range(1, 100'000));
  command.add_flag("--explicit-tags", options.serve.explicitTagging,
                   "Write the fault server's context tags as EXPLICIT");
  command.add_option("--faults", options.serve.faultsFile, "Fault script")->type_name("FILE");
  command
      .add_option("--agent-config", options.serve.agentConfigFile,
                  "Write a configuration for ormaagent here")
      ->type_name("FILE");
  command
      .add_option("--cursor-seconds", options.serve.cursorSeconds,
                  "How long a walk may rest between two pages [60]")
      ->type_name("S")
      ->check(CLI::Range(1, 86'400));
  command.add_option("--token", options.serve.token, "Ask for this X-Auth-Token")->type_name("T");
  return command;
}

CLI::App& addRaise(CLI::App& app, Options& options) {
  CLI::App& command =
      *app.add_subcommand("raise", "Raise alarms, also while the database is served");
  addDatabase(command, options);
  command
      .add_option("--count", options.raise.count,
                  "Number of alarms [1; with --rate: until SIGTERM or SIGINT]")
      ->type_name("N")
      ->check(CLI::Range(std::uint64_t{1}, kMaxAlarms));
  command.add_option("--device", options.raise.device, "Only on the device of this id")
      ->type_name("ID");
  command.add_option("--rate", options.raise.rate, "Raise so many a second [all at once]")
      ->type_name("N")
      ->check(CLI::Range(std::uint64_t{1}, kMaxAlarmRate));
  command
      .add_option("--keep", options.raise.keep,
                  "Remove the oldest alarms, so that so many stay [all]")
      ->type_name("N")
      ->check(CLI::Range(std::uint64_t{1}, kMaxAlarms));
  return command;
}

CLI::App& addStatus(CLI::App& app, Options& options) {
  CLI::App& command = *app.add_subcommand(
      "status", "Show a port and its links, and change its states, also while they are served");
  addDatabase(command, options);
  command.add_option("--port", options.port, "Port id, or DEVICE/FRAME/SLOT/CARD/PORT")
      ->required()
      ->type_name("P")
      ->check([](const std::string& text) {
        return portOf(text) ? "" : text + " is neither a port id nor DEVICE/FRAME/SLOT/CARD/PORT";
      });
  command.add_option("--states", options.states, "Change the port's two states to these")
      ->type_name("A,B")
      ->check([](const std::string& text) {
        return statesOf(text) ? "" : text + " is not two numbers with a comma between them";
      });
  return command;
}

}  // namespace

int runOrmasim(int argc, char** argv) {
  CLI::App app("ormasim: a stand-in network for the northbound agent", "ormasim");
  Options options;
  app.footer(usage::helpFooter(manual()));
  usage::addGenerator(app, {{"man", [&app] { return usage::manPage(app, manual()); }},
                            {"bash", [&app] { return usage::bashCompletion(app, manual()); }}});
  app.set_version_flag("--version", std::string("ormasim ") + kVersion);
  app.require_subcommand(1);
  const CLI::App& generate = addGenerate(app, options);
  const CLI::App& import = addImport(app, options);
  const CLI::App& serve = addServe(app, options);
  const CLI::App& raise = addRaise(app, options);
  const CLI::App& status = addStatus(app, options);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? kDone : kUsage;
  }
  try {
    if (generate.parsed()) runGenerate(options);
    if (import.parsed()) runImport(options);
    if (raise.parsed()) runRaise(options);
    if (status.parsed()) runStatus(options);
    if (serve.parsed()) runServe(options);
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "ormasim: %s\n", failure.what());
    return kFailed;
  }
  return kDone;
}

}  // namespace ormasim
