// A text buffer of 0x7FFFFFFF bytes for the calling thread.
//
// The buffer is address space, not memory: one anonymous mapping without reserve, made at the
// thread's first use, or at a later one if there was no address space then, and released when the
// thread ends. Only pages that are written cost anything.
#pragma once

#include <cstddef>

namespace emf {

class ThreadTextBuffer {
 public:
  static constexpr std::size_t kBytes = 0x7FFFFFFF;

  // The calling thread's buffer.
  static ThreadTextBuffer& forThisThread();

  // The bytes, all zero up to what the last user wrote; null when the system gives no address
  // space.
  char* cleared();
  // Tells how many bytes, the NUL not counted, the user wrote.
  void wrote(std::size_t bytes) { usedBytes_ = bytes; }

 private:
  ThreadTextBuffer() = default;
  ThreadTextBuffer(const ThreadTextBuffer&) = delete;
  ThreadTextBuffer& operator=(const ThreadTextBuffer&) = delete;
  ~ThreadTextBuffer();

  void map();

  char* bytes_ = nullptr;
  std::size_t usedBytes_ = 0;
};

}  // namespace emf
