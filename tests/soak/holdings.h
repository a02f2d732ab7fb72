// What a process holds: memory, threads, descriptors.
//
// Thread-safety: thread-safe. Failure: std::filesystem::filesystem_error when there is no such
// process.
#pragma once

#include <sys/types.h>

#include <cstddef>

namespace soak {

struct Holdings {
  std::size_t residentBytes = 0;
  std::size_t threads = 0;
  std::size_t descriptors = 0;
};

Holdings holdingsOf(pid_t process);

// Bytes that this process has allocated and not freed; 0 under a sanitizer, which has an allocator
// of its own.
std::size_t heapBytes();

}  // namespace soak
