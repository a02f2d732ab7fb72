#include "asnmessage.h"

namespace emf {

namespace {

// Their universal tags.
constexpr int kInteger = 2;
constexpr int kOctetString = 4;

using refl::CCustomBasicTypeInfor;

template <typename T>
const CCustomBasicTypeInfor& basicType(const char* name, unsigned char typeCode, int universalTag) {
  return CCustomBasicTypeInfor::InitCustomAnyBasicTypeInfor(
      CCustomBasicTypeInfor::GetBasicTypeInforImpl<T>(), name, typeCode, universalTag);
}

}  // namespace

void describeAs(refl::CGnlTypeInfor& type, const AsnInt*) {
  type.changeToBasic(basicType<AsnInt>("AsnInt", refl::Enum::AsnIntCode, kInteger));
}

void describeAs(refl::CGnlTypeInfor& type, const AsnOcts*) {
  type.changeToBasic(basicType<AsnOcts>("AsnOcts", refl::Enum::AsnOctsCode, kOctetString));
}

}  // namespace emf
