#include "orma/refl/type_infor.h"

#include <mutex>

#include "descriptor_lock.h"

namespace refl {

const CCustomBasicTypeInfor& CCustomBasicTypeInfor::InitCustomAnyBasicTypeInfor(
    Slot<CCustomBasicTypeInfor>& slot, const char* name, unsigned char typeCode, int universalTag) {
  const std::lock_guard lock(descriptorLock());
  if (slot.isEmpty()) {
    slot.descriptor_.name_ = name;
    slot.descriptor_.typeCode_ = typeCode;
    slot.descriptor_.universalTag_ = universalTag;
    slot.filled_.store(true, std::memory_order_release);
  }
  return slot.descriptor_;
}

void CGnlTypeInfor::ChangeTypeTo_CustomType(const char* typeName, unsigned long typeSize,
                                            Creator typeCreator, Destroyer typeDestroyer,
                                            short typeMark) {
  kind = Enum::CustomKind;
  name = typeName;
  size = typeSize;
  creator = typeCreator;
  destroyer = typeDestroyer;
  mark = typeMark;
}

void CGnlTypeInfor::changeToBasic(const CCustomBasicTypeInfor& basicType) {
  kind = Enum::BasicKind;
  basic = &basicType;
}

void CGnlTypeInfor::changeToClass(const CClassInfor& classType) {
  kind = Enum::ClassKind;
  described = &classType;
}

void CGnlTypeInfor::setHolding(Enum::HoldingFlagEnum holding) {
  flags = static_cast<unsigned char>((flags & ~Enum::kFlagBits) | holding);
}

Enum::HoldingFlagEnum CGnlTypeInfor::holding() const {
  return static_cast<Enum::HoldingFlagEnum>(flags & Enum::kFlagBits);
}

}  // namespace refl
