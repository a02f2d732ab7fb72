// Open inventories for the threads that answer requests.
//
//   std::unique_ptr<Inventory> inventory = pool.take();
//   use(inventory->reader<DeviceListing>());
//   pool.giveBack(std::move(inventory));  // left out after a failure: it is then closed
//
// Thread-safety: InventoryPool is thread-safe, Inventory thread-compatible. Failure: SimError.
#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <typeindex>
#include <vector>

#include "query_cursors.h"
#include "sqlite.h"

namespace ormasim {

// A connection to the database with the readers that the services have prepared on it.
class Inventory {
 public:
  Inventory(const std::string& file, QueryCursors& cursors)
      : database_(file, Database::Mode::ReadOnly), cursors_(cursors) {
    database_.requireInventory();
  }

  // The one Reader of this connection, made from the database at the first call.
  template <typename Reader>
  Reader& reader() {
    std::shared_ptr<void>& slot = readers_[typeid(Reader)];
    if (!slot) slot = std::make_shared<Reader>(database_);
    return *static_cast<Reader*>(slot.get());
  }

  // Those of the whole server.
  QueryCursors& cursors() { return cursors_; }

 private:
  Database database_;
  QueryCursors& cursors_;
  std::map<std::type_index, std::shared_ptr<void>> readers_;
};

class InventoryPool {
 public:
  // Opens the first one, so that a bad file is told at once.
  InventoryPool(std::string file, std::chrono::milliseconds cursorLife);

  std::unique_ptr<Inventory> take();
  void giveBack(std::unique_ptr<Inventory> inventory);
  QueryCursors& cursors() { return cursors_; }

 private:
  const std::string file_;
  QueryCursors cursors_;
  std::mutex mutex_;
  std::vector<std::unique_ptr<Inventory>> idle_;  // guarded by mutex_
};

}  // namespace ormasim
