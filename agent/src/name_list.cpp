#include "name_list.h"

#include <cerrno>
#include <fstream>
#include <iostream>
#include <string_view>
#include <system_error>

#include "exit_status.h"
#include "host_failure.h"
#include "waiting_for.h"

namespace ormaagent {

namespace {

// More than any name or network needs; what is no list (/dev/zero, say) ends there.
constexpr std::size_t kMostBytes = 65'536;
constexpr std::size_t kMostNames = 1'000'000;

[[noreturn]] void refuse(const std::string& file, const std::string& what) {
  throw HostFailure(kExitUsage, file + ": " + what);
}

// A line without its line feed; false behind the last one.
bool readLine(std::istream& stream, const std::string& file, std::string& line) {
  line.clear();
  for (int c = stream.get(); c != std::istream::traits_type::eof(); c = stream.get()) {
    if (c == '\n') return true;
    if (line.size() == kMostBytes) {
      refuse(file, "a line has more than " + std::to_string(kMostBytes) + " bytes");
    }
    line += static_cast<char>(c);
  }
  return !line.empty();
}

// Some editors begin a file with a byte order mark.
void dropMark(std::string& line) {
  constexpr std::string_view kMark = "\xEF\xBB\xBF";
  if (line.compare(0, kMark.size(), kMark) == 0) line.erase(0, kMark.size());
}

void readLines(std::istream& stream, const std::string& file, std::vector<std::string>& names) {
  bool first = true;
  for (std::string line; readLine(stream, file, line); first = false) {
    if (first) dropMark(line);
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (line.empty()) continue;
    if (names.size() == kMostNames) {
      refuse(file, "there are more than " + std::to_string(kMostNames) + " names");
    }
    names.push_back(line);
  }
}

[[noreturn]] void failToRead(const std::string& file) {
  refuse(file, std::generic_category().message(errno));
}

void readFile(const std::string& file, std::vector<std::string>& names) {
  const WaitingFor waiting("the file " + file);
  errno = 0;
  std::ifstream stream(file, std::ios::binary);
  if (!stream) failToRead(file);
  readLines(stream, file, names);
  if (stream.bad()) failToRead(file);
}

}  // namespace

std::vector<std::string> readNames(std::vector<std::string> words,
                                   const std::vector<std::string>& files) {
  for (const std::string& file : files) {
    if (file == "-") {
      const WaitingFor waiting("standard input");
      readLines(std::cin, "standard input", words);
    } else {
      readFile(file, words);
    }
  }
  return words;
}

}  // namespace ormaagent
