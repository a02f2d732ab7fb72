// A command line with one of everything.
#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

#include "usage/manual.h"

namespace usagetest {

class Sample {
 public:
  Sample();

  CLI::App app{"Moves boxes.", "mover"};
  usage::Manual manual;

 private:
  std::string text_;
  std::vector<std::string> texts_;
  bool flag_ = false;
};

}  // namespace usagetest
