// GraphML of any bytes: it is refused with its file, or is a network whose edges join its nodes.
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <string>

#include "error.h"
#include "graphml.h"

namespace {

// A file in memory, with a name.
class MemoryFile {
 public:
  MemoryFile(const std::uint8_t* data, std::size_t size)
      : descriptor_(::memfd_create("graphml", MFD_CLOEXEC)) {
    if (::write(descriptor_, data, size) != static_cast<ssize_t>(size)) std::abort();
  }
  ~MemoryFile() { ::close(descriptor_); }
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;

  std::string name() const { return "/proc/self/fd/" + std::to_string(descriptor_); }

 private:
  int descriptor_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const MemoryFile file(data, size);
  try {
    const ormasim::Network network = ormasim::readGraphml(file.name());
    for (const ormasim::GraphEdge& edge : network.edges) {
      if (edge.source >= network.nodes.size() || edge.target >= network.nodes.size()) std::abort();
    }
  } catch (const ormasim::SimError& error) {
    if (std::string(error.what()).find(file.name()) == std::string::npos) std::abort();
  }
  return 0;
}
