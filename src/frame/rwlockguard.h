// Holds one side of a readers-writer lock for a scope. A lock call that fails leaves its code in
// errno and does not stop the work: only the unlock is left out then.
#pragma once

#include <ace/RW_Mutex.h>

namespace emf {

class ReadGuard {
 public:
  explicit ReadGuard(ACE_RW_Mutex& lock) : lock_(lock), held_(lock.acquire_read() != -1) {}
  ReadGuard(const ReadGuard&) = delete;
  ReadGuard& operator=(const ReadGuard&) = delete;
  ~ReadGuard() {
    if (held_) lock_.release();
  }

 private:
  ACE_RW_Mutex& lock_;
  bool held_;
};

class WriteGuard {
 public:
  explicit WriteGuard(ACE_RW_Mutex& lock) : lock_(lock), held_(lock.acquire_write() != -1) {}
  WriteGuard(const WriteGuard&) = delete;
  WriteGuard& operator=(const WriteGuard&) = delete;
  ~WriteGuard() {
    if (held_) lock_.release();
  }

 private:
  ACE_RW_Mutex& lock_;
  bool held_;
};

}  // namespace emf
