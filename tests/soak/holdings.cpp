#include "holdings.h"

#include <malloc.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace soak {

namespace {

std::size_t entriesOf(const std::string& directory) {
  return static_cast<std::size_t>(
      std::distance(std::filesystem::directory_iterator(directory), {}));
}

}  // namespace

Holdings holdingsOf(pid_t process) {
  const std::string directory = "/proc/" + std::to_string(process);
  std::size_t all = 0;
  std::size_t residentPages = 0;
  std::ifstream(directory + "/statm") >> all >> residentPages;
  return {residentPages * static_cast<std::size_t>(::sysconf(_SC_PAGESIZE)),
          entriesOf(directory + "/task"), entriesOf(directory + "/fd")};
}

std::size_t heapBytes() {
  const auto heap = ::mallinfo2();  // of every arena
  return heap.uordblks + heap.hblkhd;
}

}  // namespace soak
