#include "figures.h"

#include <cstring>

#include "emfwatch.h"

namespace ormaagent {

namespace {

// The row of a name, claimed at its first use; null when all are taken. Rows are never given back,
// so those in use stand together at the front.
template <class Rows>
auto rowOf(Rows& rows, const char* name) noexcept -> decltype(rows.data()) {
  // Nearly always the very same text.
  for (auto& row : rows) {
    const char* const known = row.name.load(std::memory_order_acquire);
    if (known == name) return &row;
    if (known == nullptr) break;
  }
  for (auto& row : rows) {
    const char* known = row.name.load(std::memory_order_acquire);
    if (known == nullptr && row.name.compare_exchange_strong(known, name)) return &row;
    if (known == name || std::strcmp(known, name) == 0) return &row;
  }
  return nullptr;
}

}  // namespace

Figures& Figures::instance() {
  static auto* figures = new Figures;
  return *figures;
}

void Figures::countOperation(const char* name, std::chrono::nanoseconds length,
                             bool failed) noexcept {
  if (std::strcmp(name, kEmfSubnetRefresh) == 0) countRefresh(length, failed);
  Operation* const row = rowOf(operations_, name);
  if (row == nullptr) return;
  if (failed) row->failures.fetch_add(1, std::memory_order_relaxed);
  row->length.record(length);
}

void Figures::countCache(const char* name, std::size_t entries) noexcept {
  Cache* const row = rowOf(caches_, name);
  if (row == nullptr) return;
  row->entries.store(entries, std::memory_order_relaxed);
  row->filled.store(SteadyClock::now().time_since_epoch().count(), std::memory_order_release);
}

void Figures::countRefresh(std::chrono::nanoseconds length, bool failed) noexcept {
  const std::lock_guard<std::mutex> lock(mutex_);
  const bool before = lastRefresh_ && lastRefresh_->everSucceeded;
  lastRefresh_ = RefreshFigures{SteadyClock::now(), length, before || !failed};
}

std::vector<OperationFigures> Figures::operations() const {
  std::vector<OperationFigures> rows;
  for (const Operation& row : operations_) {
    const char* const name = row.name.load(std::memory_order_acquire);
    if (name == nullptr) break;
    rows.push_back({name, row.failures.load(std::memory_order_relaxed), row.length.snapshot()});
  }
  return rows;
}

std::vector<CacheFigures> Figures::caches() const {
  std::vector<CacheFigures> rows;
  for (const Cache& row : caches_) {
    const char* const name = row.name.load(std::memory_order_acquire);
    const SteadyClock::rep filled = row.filled.load(std::memory_order_acquire);
    if (name == nullptr) break;
    if (filled == 0) continue;  // being filled for the first time
    rows.push_back({name, row.entries.load(std::memory_order_relaxed),
                    SteadyClock::time_point(SteadyClock::duration(filled))});
  }
  return rows;
}

std::optional<RefreshFigures> Figures::lastRefresh() const {
  const std::lock_guard<std::mutex> lock(mutex_);
  return lastRefresh_;
}

}  // namespace ormaagent

// What the plug-in calls.
extern "C" EMF_API void emfOperationEnded(const char* operation, std::int64_t nanoseconds,
                                          int failed) noexcept {
  ormaagent::Figures::instance().countOperation(operation, std::chrono::nanoseconds(nanoseconds),
                                                failed != 0);
}

extern "C" EMF_API void emfCacheFilled(const char* cache, std::size_t entries) noexcept {
  ormaagent::Figures::instance().countCache(cache, entries);
}
