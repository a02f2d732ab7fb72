// The descriptor of a class: its name, size, creator, destroyer and fields. It is filled at first
// use and then walked, by a codec for one, in place of code written for the class.
//
// Thread-safety: filling is thread-safe, a filled descriptor is immutable. What a filling throws
// (std::bad_alloc, or what the attribute function throws) passes; the slot then stays empty, and
// the next use fills it.
//
//   auto& slot = refl::CClassInfor::GetClassInforImpl<AsnRelation>();
//   if (slot.isEmpty()) {
//     refl::CClassInfor::InitClassInfor(slot, "AsnRelation", sizeof(AsnRelation), create, destroy,
//                                       addAttributes);
//   }
//   refl::helper::ChangeTypeTo_ClassType(reference, slot.descriptor(), this);
#pragma once

#include <atomic>
#include <list>
#include <memory>

#include "orma/bundle/export.h"
#include "orma/refl/type_infor.h"

namespace refl {

struct CAttribInfor {
  Enum::AccessSpecifierEnum access;
  unsigned short position;  // offset in the object, in bytes
  const char* name;
  short tag;  // the number of its context tag, or -1
  CGnlTypeInfor type;
};

// What a walker of descriptors makes of one, so that it reads the texts and records only once.
class ORMA_API CCompiledForm {
 public:
  CCompiledForm() = default;
  CCompiledForm(const CCompiledForm&) = delete;
  CCompiledForm& operator=(const CCompiledForm&) = delete;
  virtual ~CCompiledForm();
};

class ORMA_API CClassInfor {
 public:
  using AttributeFunction = void (*)(CClassInfor& infor);

  ~CClassInfor();
  CClassInfor(const CClassInfor&) = delete;
  CClassInfor& operator=(const CClassInfor&) = delete;

  // Fills the slot unless it is filled, and gives its descriptor. `addAttributes` calls
  // AddAttribInfor for each field in order and may fill the slots of other classes. Of a class that
  // is being filled further up the same thread's stack it gets the descriptor as it is, to point
  // at.
  static const CClassInfor& InitClassInfor(Slot<CClassInfor>& slot, const char* name,
                                           unsigned long size, Creator creator, Destroyer destroyer,
                                           AttributeFunction addAttributes);
  // The slot of the class T.
  template <typename T>
  static Slot<CClassInfor>& GetClassInforImpl() {
    static Slot<CClassInfor> slot;
    return slot;
  }

  // Appends a field and gives its type record, which stays at its place. `tag` is the number of its
  // context tag, -1 when it goes under the tag of its own type.
  CGnlTypeInfor& AddAttribInfor(Enum::AccessSpecifierEnum access, unsigned short position,
                                const char* name, short tag);

  const char* name() const noexcept { return name_; }
  unsigned long size() const noexcept { return size_; }
  Creator creator() const noexcept { return creator_; }
  Destroyer destroyer() const noexcept { return destroyer_; }
  const std::list<CAttribInfor>& attributes() const noexcept { return attributes_; }

  // Null until one is kept.
  const CCompiledForm* compiledForm() const noexcept {
    return compiled_.load(std::memory_order_acquire);
  }
  // Keeps the form unless there is one already, and gives the one that is kept.
  const CCompiledForm* keepCompiledForm(std::unique_ptr<const CCompiledForm> form) const noexcept;

 private:
  friend class Slot<CClassInfor>;
  CClassInfor() = default;

  const char* name_ = "";
  unsigned long size_ = 0;
  Creator creator_ = nullptr;
  Destroyer destroyer_ = nullptr;
  std::list<CAttribInfor> attributes_;
  mutable std::atomic<const CCompiledForm*> compiled_{nullptr};  // owned
};

// An object together with the descriptor of its class; both are borrowed.
struct CRefrence {
  const CClassInfor* infor = nullptr;
  const void* object = nullptr;
};

namespace helper {

// Makes the reference one to an object of a described class.
inline void ChangeTypeTo_ClassType(CRefrence& reference, const CClassInfor& infor,
                                   const void* object) noexcept {
  reference.infor = &infor;
  reference.object = object;
}

}  // namespace helper
}  // namespace refl
