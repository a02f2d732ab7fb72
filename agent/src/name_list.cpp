#include "name_list.h"

#include <cerrno>
#include <fstream>
#include <iostream>
#include <system_error>

#include "exit_status.h"
#include "host_failure.h"
#include "waiting_for.h"

namespace ormaagent {

namespace {

void readLines(std::istream& stream, std::vector<std::string>& names) {
  for (std::string line; std::getline(stream, line);) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (!line.empty()) names.push_back(line);
  }
}

[[noreturn]] void failToRead(const std::string& file) {
  throw HostFailure(kExitUsage, file + ": " + std::generic_category().message(errno));
}

void readFile(const std::string& file, std::vector<std::string>& names) {
  const WaitingFor waiting("the file " + file);
  errno = 0;
  std::ifstream stream(file, std::ios::binary);
  if (!stream) failToRead(file);
  readLines(stream, names);
  if (stream.bad()) failToRead(file);
}

}  // namespace

std::vector<std::string> readNames(std::vector<std::string> words,
                                   const std::vector<std::string>& files) {
  for (const std::string& file : files) {
    if (file == "-") {
      const WaitingFor waiting("standard input");
      readLines(std::cin, words);
    } else {
      readFile(file, words);
    }
  }
  return words;
}

}  // namespace ormaagent
