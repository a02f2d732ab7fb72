#include <utility>

#include "bundle_state.h"

namespace NS_BUNDLEMGR1 {

Bundle::Bundle(std::string name) : state_(std::make_unique<State>()) {
  state_->name = std::move(name);
}

Bundle::~Bundle() = default;

const std::string& Bundle::GetName() const { return state_->name; }

void Bundle::GetServices(std::map<std::string, ServiceObjectBase*>& services) const {
  const std::lock_guard lock(state_->mutex);
  services = state_->services;
}

}  // namespace NS_BUNDLEMGR1
