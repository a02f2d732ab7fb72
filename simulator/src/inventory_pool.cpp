#include "inventory_pool.h"

#include <utility>

namespace ormasim {

InventoryPool::InventoryPool(std::string file, std::chrono::milliseconds cursorLife)
    : file_(std::move(file)), cursors_(cursorLife) {
  idle_.push_back(std::make_unique<Inventory>(file_, cursors_));
}

std::unique_ptr<Inventory> InventoryPool::take() {
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    if (!idle_.empty()) {
      std::unique_ptr<Inventory> inventory = std::move(idle_.back());
      idle_.pop_back();
      return inventory;
    }
  }
  return std::make_unique<Inventory>(file_, cursors_);
}

void InventoryPool::giveBack(std::unique_ptr<Inventory> inventory) {
  const std::lock_guard<std::mutex> lock(mutex_);
  idle_.push_back(std::move(inventory));
}

}  // namespace ormasim
