#include "orma/refl/class_infor.h"

#include <mutex>

#include "descriptor_lock.h"

namespace refl {

// Never destroyed: static objects of other libraries may be the last to describe a class.
std::recursive_mutex& descriptorLock() {
  static auto* lock = new std::recursive_mutex;
  return *lock;
}

CCompiledForm::~CCompiledForm() = default;

CClassInfor::~CClassInfor() { delete compiled_.load(std::memory_order_relaxed); }

const CClassInfor& CClassInfor::InitClassInfor(Slot<CClassInfor>& slot, const char* name,
                                               unsigned long size, Creator creator,
                                               Destroyer destroyer,
                                               AttributeFunction addAttributes) {
  const std::lock_guard lock(descriptorLock());
  CClassInfor& infor = slot.descriptor_;
  if (!slot.isEmpty() || slot.filling_) return infor;
  infor.name_ = name;
  infor.size_ = size;
  infor.creator_ = creator;
  infor.destroyer_ = destroyer;
  slot.filling_ = true;
  try {
    addAttributes(infor);
  } catch (...) {
    infor.attributes_.clear();
    slot.filling_ = false;
    throw;
  }
  slot.filling_ = false;
  slot.filled_.store(true, std::memory_order_release);
  return infor;
}

CGnlTypeInfor& CClassInfor::AddAttribInfor(Enum::AccessSpecifierEnum access,
                                           unsigned short position, const char* name, short tag) {
  attributes_.push_back({access, position, name, tag, {}});
  return attributes_.back().type;
}

const CCompiledForm* CClassInfor::keepCompiledForm(
    std::unique_ptr<const CCompiledForm> form) const noexcept {
  const CCompiledForm* kept = nullptr;
  if (compiled_.compare_exchange_strong(kept, form.get(), std::memory_order_acq_rel)) {
    kept = form.release();
  }
  return kept;
}

}  // namespace refl
