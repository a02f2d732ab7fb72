#include <ace/Guard_T.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "orma/bundle/interface_slot.h"

namespace NS_BUNDLEMGR1 {
namespace {

using testing::ElementsAre;

// Knows which thread files it and as which of its interfaces.
struct Numbered : ServiceInterface {
  Numbered(int filer, int number) : filer_(filer), number_(number) {}
  std::string GetIFName() override {
    return std::to_string(filer_) + "." + std::to_string(number_);
  }
  int IsValid() override { return 1; }
  const int filer_;
  const int number_;
};

TEST(InterfaceSlot, IsEmptyAtFirst) {
  InterfaceSlot slot;
  EXPECT_TRUE(slot.empty());
  EXPECT_EQ(slot.front(), nullptr);
  EXPECT_THAT(slot.snapshot(), ElementsAre());
}

TEST(InterfaceSlot, KeepsFilingOrder) {
  Numbered a(0, 1), b(0, 2), c(0, 3);
  InterfaceSlot slot;
  for (Numbered* one : {&b, &a, &c}) slot.push_back(one);
  EXPECT_FALSE(slot.empty());
  EXPECT_EQ(slot.front(), &b);
  EXPECT_THAT(slot.snapshot(), ElementsAre(&b, &a, &c));
}

TEST(InterfaceSlot, RemovingTheFirstMakesTheNextOneFirst) {
  Numbered a(0, 1), b(0, 2);
  InterfaceSlot slot;
  slot.push_back(&a);
  slot.push_back(&b);
  slot.push_back(&a);
  slot.remove(&a);
  EXPECT_EQ(slot.front(), &b);
  EXPECT_THAT(slot.snapshot(), ElementsAre(&b));
  slot.remove(&b);
  EXPECT_TRUE(slot.empty());
  slot.push_back(&a);
  EXPECT_THAT(slot.snapshot(), ElementsAre(&a));
}

TEST(InterfaceSlot, FilingAgainKeepsTheOrderWhateverGapsThereAre) {
  Numbered a(0, 1), b(0, 2), c(0, 3), d(0, 4);
  InterfaceSlot slot;
  for (Numbered* one : {&a, &b, &c}) slot.push_back(one);
  slot.remove(&a);  // a gap in front is not filled
  slot.push_back(&d);
  EXPECT_THAT(slot.snapshot(), ElementsAre(&b, &c, &d));
  slot.remove(&c);
  slot.remove(&d);
  slot.push_back(&a);
  slot.push_back(&d);
  EXPECT_THAT(slot.snapshot(), ElementsAre(&b, &a, &d));
}

TEST(InterfaceSlot, NullsAndUnknownOnesAreIgnored) {
  Numbered a(0, 1), b(0, 2);
  InterfaceSlot slot;
  slot.push_back(nullptr);
  EXPECT_TRUE(slot.empty());
  slot.push_back(&a);
  slot.remove(&b);
  slot.remove(nullptr);
  EXPECT_THAT(slot.snapshot(), ElementsAre(&a));
}

TEST(InterfaceSlots, OneNameIsOneSlot) {
  InterfaceSlot* slot = CheckIFBuf("slots.one");
  ASSERT_NE(slot, nullptr);
  EXPECT_EQ(CheckIFBuf("slots.one"), slot);
  EXPECT_NE(CheckIFBuf("slots.other"), slot);
  EXPECT_EQ(CheckIFBuf(""), nullptr);
}

TEST(InterfaceSlots, SetIFBufFilesUnderItsName) {
  Numbered a(0, 1), b(0, 2);
  SetIFBuf("slots.filed", &a);
  SetIFBuf("slots.filed", &b);
  SetIFBuf("slots.filed", nullptr);
  SetIFBuf("", &a);
  EXPECT_THAT(CheckIFBuf("slots.filed")->snapshot(), ElementsAre(&a, &b));
  CheckIFBuf("slots.filed")->remove(&a);
  CheckIFBuf("slots.filed")->remove(&b);
}

TEST(InterfaceSlots, CanBeFoundAndFilledWithTheMutexHeld) {
  Numbered a(0, 1);
  ACE_Guard<ACE_Thread_Mutex> guard(_g_actualmutex);
  InterfaceSlot* slot = CheckIFBuf("slots.held");
  slot->push_back(&a);
  EXPECT_EQ(slot->front(), &a);
  slot->remove(&a);
}

TEST(InterfaceSlots, SetIFBufWaitsForTheMutex) {
  Numbered a(0, 1);
  InterfaceSlot* slot = CheckIFBuf("slots.guarded");
  std::thread filer;
  {
    ACE_Guard<ACE_Thread_Mutex> guard(_g_actualmutex);
    filer = std::thread([&] { SetIFBuf("slots.guarded", &a); });
    EXPECT_TRUE(slot->empty());
  }
  filer.join();
  EXPECT_EQ(slot->front(), &a);
  slot->remove(&a);
}

class SlotUnderThreads : public testing::Test {
 protected:
  static constexpr int kFilers = 3;
  static constexpr int kEach = 300;

  SlotUnderThreads() {
    for (int filer = 0; filer < kFilers; ++filer) {
      for (int i = 0; i < kEach; ++i) made_.push_back(std::make_unique<Numbered>(filer, i));
    }
  }

  ServiceInterface* made(int filer, int i) { return made_[filer * kEach + i].get(); }

  // Whether the interfaces of each filer stand in the order in which it files them.
  static bool inOrder(const std::vector<ServiceInterface*>& filed) {
    std::vector<int> last(kFilers, -1);
    for (ServiceInterface* one : filed) {
      const auto* numbered = static_cast<Numbered*>(one);
      if (numbered->number_ <= last[numbered->filer_]) return false;
      last[numbered->filer_] = numbered->number_;
    }
    return true;
  }

  void readWhileFilling(InterfaceSlot& slot) {
    while (filling_ > 0) {
      if (!inOrder(slot.snapshot())) ++faults_;
      ServiceInterface* first = slot.front();
      if (first != nullptr && first->IsValid() != 1) ++faults_;
    }
  }

  template <typename Fill>
  void run(InterfaceSlot& slot, Fill fill) {
    std::vector<std::thread> threads;
    for (int filer = 0; filer < kFilers; ++filer) {
      threads.emplace_back([&, filer] {
        for (int i = 0; i < kEach; ++i) fill(made(filer, i));
        --filling_;
      });
    }
    for (int i = 0; i < 2; ++i) threads.emplace_back([&] { readWhileFilling(slot); });
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(faults_, 0);
  }

  std::vector<std::unique_ptr<Numbered>> made_;
  std::atomic<int> filling_{kFilers};
  std::atomic<int> faults_{0};
};

TEST_F(SlotUnderThreads, LosesNothingWhileReadersLook) {
  InterfaceSlot slot;
  run(slot, [&](ServiceInterface* one) { slot.push_back(one); });
  EXPECT_EQ(slot.snapshot().size(), made_.size());
  EXPECT_TRUE(inOrder(slot.snapshot()));
}

TEST_F(SlotUnderThreads, KeepsExactlyWhatWasNotRemoved) {
  InterfaceSlot slot;
  run(slot, [&](ServiceInterface* one) {
    slot.push_back(one);
    if (static_cast<Numbered*>(one)->number_ % 3 != 0) slot.remove(one);
  });
  EXPECT_EQ(slot.snapshot().size(), made_.size() / 3);
}

TEST_F(SlotUnderThreads, IsFilledByNameFromAllThreads) {
  InterfaceSlot& slot = *CheckIFBuf("slots.threads");
  run(slot, [&](ServiceInterface* one) {
    SetIFBuf("slots.threads", one);
    CheckIFBuf("slots.threads." + one->GetIFName());
  });
  EXPECT_EQ(slot.snapshot().size(), made_.size());
  for (const auto& one : made_) slot.remove(one.get());
  EXPECT_TRUE(slot.empty());
}

}  // namespace
}  // namespace NS_BUNDLEMGR1
