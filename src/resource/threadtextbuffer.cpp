#include "threadtextbuffer.h"

#include <sys/mman.h>

#include <cstring>

namespace emf {

ThreadTextBuffer& ThreadTextBuffer::forThisThread() {
  thread_local ThreadTextBuffer buffer;
  return buffer;
}

void ThreadTextBuffer::map() {
  void* mapping = ::mmap(nullptr, kBytes, PROT_READ | PROT_WRITE,
                         MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
  if (mapping == MAP_FAILED) return;
  // A text takes a small page, also where the system would rather hand out huge ones.
  ::madvise(mapping, kBytes, MADV_NOHUGEPAGE);
  bytes_ = static_cast<char*>(mapping);
}

ThreadTextBuffer::~ThreadTextBuffer() {
  if (bytes_ != nullptr) ::munmap(bytes_, kBytes);
}

char* ThreadTextBuffer::cleared() {
  if (bytes_ == nullptr) map();
  if (bytes_ != nullptr) std::memset(bytes_, 0, usedBytes_);
  usedBytes_ = 0;
  return bytes_;
}

}  // namespace emf
