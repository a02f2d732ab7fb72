#include "orma/refl/class_infor.h"

#include <gmock/gmock.h>

#include <atomic>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace {

using refl::CClassInfor;
using Basic = refl::CCustomBasicTypeInfor;

struct Number {};
struct List {};

template <typename T>
void* create() {
  return new T;
}

template <typename T>
void destroy(void* object) {
  delete static_cast<T*>(object);
}

// A class of its own for each test, so that its slot is empty.
template <int kNumber>
struct Described {};

template <int kNumber>
refl::Slot<CClassInfor>& slot() {
  return CClassInfor::GetClassInforImpl<Described<kNumber>>();
}

template <int kNumber>
const CClassInfor& fill(CClassInfor::AttributeFunction addAttributes) {
  using T = Described<kNumber>;
  return CClassInfor::InitClassInfor(slot<kNumber>(), "Described", 48, create<T>, destroy<T>,
                                     addAttributes);
}

void addNothing(CClassInfor&) {}

TEST(ClassInfor, IsEmptyUntilItIsFilled) {
  EXPECT_TRUE(slot<1>().isEmpty());
  const CClassInfor& infor = fill<1>(addNothing);
  EXPECT_FALSE(slot<1>().isEmpty());
  EXPECT_EQ(&slot<1>().descriptor(), &infor);
  EXPECT_STREQ(infor.name(), "Described");
  EXPECT_EQ(infor.size(), 48U);
  EXPECT_EQ(infor.creator(), create<Described<1>>);
  EXPECT_EQ(infor.destroyer(), destroy<Described<1>>);
  EXPECT_TRUE(infor.attributes().empty());
}

TEST(ClassInfor, HasOneSlotForEachClass) { EXPECT_NE(&slot<1>(), &slot<2>()); }

TEST(ClassInfor, IsFilledOnce) {
  fill<3>([](CClassInfor& infor) { infor.AddAttribInfor(refl::Enum::Public, 8, "a", -1); });
  fill<3>([](CClassInfor& infor) { infor.AddAttribInfor(refl::Enum::Public, 8, "b", -1); });
  ASSERT_EQ(slot<3>().descriptor().attributes().size(), 1U);
  EXPECT_STREQ(slot<3>().descriptor().attributes().front().name, "a");
}

TEST(ClassInfor, HoldsItsAttributesInOrder) {
  const CClassInfor& infor = fill<4>([](CClassInfor& filled) {
    auto& first = filled.AddAttribInfor(refl::Enum::Private, 16, "first", 7);
    filled.AddAttribInfor(refl::Enum::Public, 24, "second", -1)
        .ChangeTypeTo_CustomType("List", 32, create<List>, destroy<List>, refl::Enum::kListMark);
    // The record stays where it is while others come behind it.
    first.changeToBasic(Basic::InitCustomAnyBasicTypeInfor(Basic::GetBasicTypeInforImpl<Number>(),
                                                           "Number", 14, 2));
  });
  ASSERT_EQ(infor.attributes().size(), 2U);
  const auto& first = infor.attributes().front();
  EXPECT_EQ(first.access, refl::Enum::Private);
  EXPECT_EQ(first.position, 16);
  EXPECT_STREQ(first.name, "first");
  EXPECT_EQ(first.tag, 7);
  EXPECT_EQ(first.type.kind, 0x70);
  EXPECT_STREQ(first.type.basic->name(), "Number");
  EXPECT_EQ(first.type.basic->typeCode(), 14);
  EXPECT_EQ(first.type.basic->universalTag(), 2);
  const auto& second = infor.attributes().back();
  EXPECT_EQ(second.tag, -1);
  EXPECT_EQ(second.type.kind, refl::Enum::CustomKind);
  EXPECT_STREQ(second.type.name, "List");
  EXPECT_EQ(second.type.size, 32U);
  EXPECT_EQ(second.type.creator, create<List>);
  EXPECT_EQ(second.type.destroyer, destroy<List>);
  EXPECT_EQ(second.type.mark, 41);
}

TEST(ClassInfor, MayPointAtItself) {
  const CClassInfor& infor = fill<5>([](CClassInfor& filled) {
    auto& type = filled.AddAttribInfor(refl::Enum::Public, 8, "next", 0);
    type.changeToClass(fill<5>(addNothing));
  });
  EXPECT_EQ(infor.attributes().front().type.kind, 1);
  EXPECT_EQ(infor.attributes().front().type.described, &infor);
}

TEST(ClassInfor, StaysEmptyWhenItsFillingFails) {
  EXPECT_THROW(fill<6>([](CClassInfor& infor) {
                 infor.AddAttribInfor(refl::Enum::Public, 8, "lost", -1);
                 throw std::runtime_error("no memory");
               }),
               std::runtime_error);
  EXPECT_TRUE(slot<6>().isEmpty());
  fill<6>(addNothing);
  EXPECT_FALSE(slot<6>().isEmpty());
  EXPECT_TRUE(slot<6>().descriptor().attributes().empty());
}

std::atomic<int> fillings{0};

TEST(ClassInfor, IsFilledOnceByManyThreads) {
  std::vector<std::thread> threads;
  std::atomic<int> complete{0};
  for (int i = 0; i < 8; ++i) {
    threads.emplace_back([&complete] {
      if (slot<7>().isEmpty()) {
        fill<7>([](CClassInfor& infor) {
          ++fillings;
          for (const char* name : {"a", "b", "c"}) {
            infor.AddAttribInfor(refl::Enum::Public, 8, name, -1)
                .changeToClass(fill<8>(addNothing));
          }
        });
      }
      if (slot<7>().descriptor().attributes().size() == 3) ++complete;
    });
  }
  for (auto& thread : threads) thread.join();
  EXPECT_EQ(fillings, 1);
  EXPECT_EQ(complete, 8);
}

TEST(GnlTypeInfor, KeepsTheUpperBitsOfItsFlags) {
  refl::CGnlTypeInfor type;
  type.flags = 0xC5;
  type.setHolding(refl::Enum::RequiredPointer);
  EXPECT_EQ(type.flags, 0xC0 | 0x12);
  EXPECT_EQ(type.holding(), refl::Enum::RequiredPointer);
  type.setHolding(refl::Enum::OptionalPointer);
  EXPECT_EQ(type.flags, 0xC0 | 0x19);
}

class CountedForm : public refl::CCompiledForm {
 public:
  explicit CountedForm(int& destroyed) : destroyed_(destroyed) {}
  ~CountedForm() override { ++destroyed_; }

 private:
  int& destroyed_;
};

int formsDestroyed = 0;

TEST(ClassInfor, KeepsTheFirstCompiledForm) {
  const CClassInfor& infor = fill<9>(addNothing);
  EXPECT_EQ(infor.compiledForm(), nullptr);
  const auto* first = infor.keepCompiledForm(std::make_unique<CountedForm>(formsDestroyed));
  EXPECT_EQ(infor.compiledForm(), first);
  EXPECT_EQ(infor.keepCompiledForm(std::make_unique<CountedForm>(formsDestroyed)), first);
  EXPECT_EQ(formsDestroyed, 1);
  EXPECT_EQ(infor.compiledForm(), first);
}

TEST(Reference, IsBoundToAnObjectOfADescribedClass) {
  const CClassInfor& infor = fill<10>(addNothing);
  const Described<10> object{};
  refl::CRefrence reference;
  refl::helper::ChangeTypeTo_ClassType(reference, infor, &object);
  EXPECT_EQ(reference.infor, &infor);
  EXPECT_EQ(reference.object, &object);
}

}  // namespace
