#include "inventory_pool.h"

#include <utility>

namespace ormasim {

InventoryPool::InventoryPool(std::string file) : file_(std::move(file)) {
  idle_.push_back(std::make_unique<Inventory>(file_));
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
  return std::make_unique<Inventory>(file_);
}

void InventoryPool::giveBack(std::unique_ptr<Inventory> inventory) {
  const std::lock_guard<std::mutex> lock(mutex_);
  idle_.push_back(std::move(inventory));
}

}  // namespace ormasim
