// The access product's library, loaded as it is at a site: by name, and closed before its instance
// is used.
#include <ace/DLL.h>
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <link.h>

#include <memory>

#include "orma/access/prdu_res_info_convert.h"

namespace {

using PRDU_ORMA::PrduResInfoConvert;

constexpr char kName[] = "libsnmpresinfo_productconvert_access.so";
constexpr int kLazyAndGlobal = 0x101;

// An instance whose library is closed again.
std::unique_ptr<PrduResInfoConvert> instanceOfClosedLibrary() {
  ACE_DLL library(true);
  if (library.open(kName, kLazyAndGlobal, false) != 0) return nullptr;
  void* const symbol = library.symbol("createInstanceLib");
  std::unique_ptr<PrduResInfoConvert> instance;
  if (symbol != nullptr) {
    instance.reset(reinterpret_cast<PRDU_ORMA::CreateInstanceLib>(symbol)());
  }
  EXPECT_EQ(library.close(), 0);
  return instance;
}

TEST(AccessLibrary, InstanceOutlivesTheCloseOfItsLibrary) {
  const auto instance = instanceOfClosedLibrary();
  ASSERT_NE(instance, nullptr);
  EXPECT_EQ(instance->Init(), 0);
  EXPECT_EQ(instance->Init(), 0);
}

// ACE keeps a library that it opened like this until it ends itself, so a call after the close
// would not tell.
TEST(AccessLibrary, IsLinkedToStayMapped) {
  void* const handle = ::dlopen(kName, RTLD_LAZY);
  ASSERT_NE(handle, nullptr);
  link_map* map = nullptr;
  ASSERT_EQ(::dlinfo(handle, RTLD_DI_LINKMAP, &map), 0);
  ElfW(Xword) flags = 0;
  for (const ElfW(Dyn)* entry = map->l_ld; entry->d_tag != DT_NULL; ++entry) {
    if (entry->d_tag == DT_FLAGS_1) flags = entry->d_un.d_val;
  }
  EXPECT_NE(flags & DF_1_NODELETE, 0U);
  ::dlclose(handle);
}

TEST(AccessLibrary, EachCallMakesAnInstance) {
  const auto first = instanceOfClosedLibrary();
  const auto second = instanceOfClosedLibrary();
  ASSERT_NE(first, nullptr);
  ASSERT_NE(second, nullptr);
  EXPECT_NE(first, second);
}

// The plug-in calls the operation by its place in the table: behind the destructor's two.
TEST(AccessLibrary, ThirdVirtualOperationIsInit) {
  const auto instance = instanceOfClosedLibrary();
  ASSERT_NE(instance, nullptr);
  using Operation = int (*)(PrduResInfoConvert*);
  const Operation* const table = *reinterpret_cast<Operation* const*>(instance.get());
  EXPECT_EQ(table[2](instance.get()), 0);
}

TEST(AccessLibrary, ShowsItsOneFunctionAndItsClass) {
  void* const handle = ::dlopen(kName, RTLD_LAZY);
  ASSERT_NE(handle, nullptr);
  EXPECT_NE(::dlsym(handle, "createInstanceLib"), nullptr);
  EXPECT_NE(::dlsym(handle, "_ZN9PRDU_ORMA18PrduResInfoConvert4InitEv"), nullptr);
  ::dlclose(handle);
}

}  // namespace
