#include "orma/bundle/interface_slot.h"

#include <ace/Guard_T.h>

#include <map>
#include <memory>
#include <mutex>
#include <shared_mutex>

#include "interface_filings.h"

namespace NS_BUNDLEMGR1 {

namespace {

struct SlotTable {
  std::shared_mutex mutex;  // guards slots; never held while another lock is taken
  std::map<std::string, std::unique_ptr<InterfaceSlot>> slots;
};

// Never destroyed: callers keep slots until the process ends, static destructors included.
SlotTable& slotTable() {
  static auto* table = new SlotTable;
  return *table;
}

thread_local std::vector<Filing>* currentFilings = nullptr;

}  // namespace

// Destroyed after every library that uses it, since those are linked against this one.
ACE_Thread_Mutex _g_actualmutex;

// An entry stays until its slot goes; taking an interface out only clears it. So readers follow
// the chain without a lock.
struct InterfaceSlot::Entry {
  explicit Entry(ServiceInterface* filed) : interface(filed) {}
  std::atomic<ServiceInterface*> interface;
  std::atomic<Entry*> next{nullptr};
};

InterfaceSlot::InterfaceSlot() = default;

InterfaceSlot::~InterfaceSlot() {
  for (Entry* entry = first_.load(); entry != nullptr;) {
    std::unique_ptr<Entry> owned(entry);
    entry = owned->next.load();
  }
}

ServiceInterface* InterfaceSlot::front() const {
  for (Entry* entry = first_.load(std::memory_order_acquire); entry != nullptr;
       entry = entry->next.load(std::memory_order_acquire)) {
    if (auto* filed = entry->interface.load(std::memory_order_acquire)) return filed;
  }
  return nullptr;
}

std::vector<ServiceInterface*> InterfaceSlot::snapshot() const {
  std::vector<ServiceInterface*> filed;
  for (Entry* entry = first_.load(std::memory_order_acquire); entry != nullptr;
       entry = entry->next.load(std::memory_order_acquire)) {
    if (auto* one = entry->interface.load(std::memory_order_acquire)) filed.push_back(one);
  }
  return filed;
}

// Takes no lock: callers may hold _g_actualmutex.
void InterfaceSlot::push_back(ServiceInterface* interface) {
  if (interface == nullptr) return;
  while (Entry* spare = trailingSpare()) {
    ServiceInterface* none = nullptr;
    if (spare->interface.compare_exchange_strong(none, interface, std::memory_order_acq_rel))
      return;
  }
  auto* entry = new Entry(interface);
  for (std::atomic<Entry*>* link = &first_;;) {
    Entry* last = nullptr;
    if (link->compare_exchange_strong(last, entry, std::memory_order_acq_rel)) return;
    link = &last->next;
  }
}

// An interface that is filed anew after each start would otherwise lengthen the chain for ever.
InterfaceSlot::Entry* InterfaceSlot::trailingSpare() const {
  Entry* spare = nullptr;
  for (Entry* entry = first_.load(std::memory_order_acquire); entry != nullptr;
       entry = entry->next.load(std::memory_order_acquire)) {
    if (entry->interface.load(std::memory_order_acquire) != nullptr) {
      spare = nullptr;
    } else if (spare == nullptr) {
      spare = entry;
    }
  }
  return spare;
}

void InterfaceSlot::remove(ServiceInterface* interface) {
  if (interface == nullptr) return;
  for (Entry* entry = first_.load(std::memory_order_acquire); entry != nullptr;
       entry = entry->next.load(std::memory_order_acquire)) {
    ServiceInterface* filed = interface;
    entry->interface.compare_exchange_strong(filed, nullptr, std::memory_order_acq_rel);
  }
}

void SetIFBuf(const std::string& name, ServiceInterface* interface) {
  InterfaceSlot* slot = CheckIFBuf(name);
  if (slot == nullptr || interface == nullptr) return;
  ACE_Guard<ACE_Thread_Mutex> guard(_g_actualmutex);
  if (currentFilings != nullptr) currentFilings->push_back({slot, interface});
  slot->push_back(interface);
}

InterfaceSlot* CheckIFBuf(const std::string& name) {
  if (name.empty()) return nullptr;
  SlotTable& table = slotTable();
  {
    std::shared_lock lock(table.mutex);
    const auto found = table.slots.find(name);
    if (found != table.slots.end()) return found->second.get();
  }
  std::unique_lock lock(table.mutex);
  const auto found = table.slots.find(name);  // another thread may have made it meanwhile
  if (found != table.slots.end()) return found->second.get();
  return table.slots.emplace(name, std::make_unique<InterfaceSlot>()).first->second.get();
}

FilingScope::FilingScope(std::vector<Filing>& filings) : previous_(currentFilings) {
  currentFilings = &filings;
}

FilingScope::~FilingScope() { currentFilings = previous_; }

void takeBack(const std::vector<Filing>& filings,
              const std::vector<ServiceInterface*>& interfaces) {
  for (const Filing& filing : filings) filing.slot->remove(filing.interface);
  SlotTable& table = slotTable();
  std::shared_lock lock(table.mutex);
  for (const auto& [name, slot] : table.slots) {
    for (ServiceInterface* interface : interfaces) slot->remove(interface);
  }
}

}  // namespace NS_BUNDLEMGR1
