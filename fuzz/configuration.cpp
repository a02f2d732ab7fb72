// A configuration from any text: it is taken, or refused with at least one problem that names the
// place and says what is wrong.
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "orma/bundle/configuration.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  std::vector<orma::ConfigProblem> problems;
  const auto configuration = orma::Configuration::parse(text, "agent.json", "/", problems);
  if ((configuration == nullptr) == problems.empty()) std::abort();
  for (const auto& problem : problems) {
    if (problem.where.compare(0, 10, "agent.json") != 0 || problem.what.empty()) std::abort();
  }
  if (configuration) static_cast<void>(configuration->integer("log.level"));
  return 0;
}
