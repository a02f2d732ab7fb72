// Problems of a configuration as lines that a test can compare.
#pragma once

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "orma/bundle/configuration.h"

inline std::vector<std::string> asLines(const std::vector<orma::ConfigProblem>& problems) {
  std::vector<std::string> lines;
  for (const auto& problem : problems) lines.push_back(problem.where + " | " + problem.what);
  return lines;
}

// The problems of a text that stands in "agent.json" in the directory /conf.
inline std::vector<std::string> problemsOf(const std::string& text) {
  std::vector<orma::ConfigProblem> problems;
  const auto configuration = orma::Configuration::parse(text, "agent.json", "/conf", problems);
  std::vector<std::string> lines = asLines(problems);
  if ((configuration == nullptr) == lines.empty()) lines.push_back("result and problems disagree");
  return lines;
}

// The configuration of a text without problems, in the directory /conf.
inline std::shared_ptr<const orma::Configuration> parsed(const std::string& text) {
  std::vector<orma::ConfigProblem> problems;
  auto configuration = orma::Configuration::parse(text, "agent.json", "/conf", problems);
  if (!configuration) throw std::invalid_argument(asLines(problems).at(0));
  return configuration;
}
