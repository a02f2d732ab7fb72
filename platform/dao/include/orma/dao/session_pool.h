// Sessions for the threads that read at the same time: each takes one for a read and gives it
// back. A thread never waits for another's session.
//
//   dao::SessionPool::Lease lease(pool);
//   dao::CCursorTable rows;  // behind the lease: no statement stays open on a session in the pool
//   rows.Open(lease.session(), "SELECT name FROM device");
//
// Thread-safety: thread-safe; a lease belongs to one thread. Nothing is thrown but std::bad_alloc.
#pragma once

#include <memory>
#include <mutex>
#include <vector>

#include "orma/dao/sql_session.h"

namespace dao {

class SessionPool {
 public:
  SessionPool() { idle_.reserve(kMostIdle); }

  // A session out of the pool for as long as the lease lives.
  class Lease {
   public:
    explicit Lease(SessionPool& pool) : pool_(pool), session_(pool.take()) {}
    ~Lease() { pool_.giveBack(std::move(session_)); }
    Lease(const Lease&) = delete;
    Lease& operator=(const Lease&) = delete;
    CSqlSession& session() { return *session_; }

   private:
    SessionPool& pool_;
    std::unique_ptr<CSqlSession> session_;
  };

 private:
  static constexpr std::size_t kMostIdle = 8;

  std::unique_ptr<CSqlSession> take() {
    const std::lock_guard<std::mutex> lock(mutex_);
    if (idle_.empty()) return std::make_unique<CSqlSession>();
    auto session = std::move(idle_.back());
    idle_.pop_back();
    return session;
  }

  void giveBack(std::unique_ptr<CSqlSession> session) {
    const std::lock_guard<std::mutex> lock(mutex_);
    if (idle_.size() < kMostIdle) idle_.push_back(std::move(session));
  }

  std::mutex mutex_;
  std::vector<std::unique_ptr<CSqlSession>> idle_;  // guarded by mutex_
};

}  // namespace dao
