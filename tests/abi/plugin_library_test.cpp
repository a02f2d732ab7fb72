// The built library: what it exports, and what another library finds through it.
#include <ace/Service_Object.h>
#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "emfinterfaceversion.h"
#include "errorcodebufif.h"
#include "orma/bundle/interface_slot.h"
#include "orma/bundle/service_object_base.h"

namespace {

using ::testing::ElementsAreArray;
using ::testing::IsEmpty;
using ::testing::Not;

using Lines = std::vector<std::string>;

Lines outputOf(const std::string& command) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> pipe(::popen(command.c_str(), "r"),
                                                             ::pclose);
  Lines lines;
  char line[4096];
  while (pipe != nullptr && std::fgets(line, sizeof line, pipe.get()) != nullptr) {
    lines.emplace_back(line, std::string(line).find_last_not_of('\n') + 1);
  }
  return lines;
}

Lines linesOf(const std::string& file) {
  Lines lines;
  std::ifstream stream(file);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

// What the dynamic table defines: kind letter, blank and name of each.
Lines exportedSymbols() {
  constexpr std::size_t kAddressWidth = 17;
  Lines symbols;
  for (const std::string& line : outputOf("'" EMF_NM "' -D --defined-only -C '" EMF_PLUGIN "'")) {
    symbols.push_back(line.substr(kAddressWidth));
  }
  return symbols;
}

// The names of those that are functions the compiler made and may as well inline, or of the
// others. The former come and go with the optimiser.
Lines exportedNames(bool inlined) {
  Lines names;
  for (const std::string& symbol : exportedSymbols()) {
    if ((symbol[0] == 'W') == inlined) names.push_back(symbol.substr(2));
  }
  std::sort(names.begin(), names.end());
  // A constructor has an entry for whole objects and one for bases.
  names.erase(std::unique(names.begin(), names.end()), names.end());
  return names;
}

TEST(PluginLibrary, ExportsTheListedNamesAndNothingElse) {
  const Lines exported = exportedNames(false);
  ASSERT_THAT(exported, Not(IsEmpty()));
  EXPECT_THAT(exported, ElementsAreArray(linesOf(EMF_EXPORTED_SYMBOLS)));
}

TEST(PluginLibrary, InlinedExportsAreMembersOfExportedClasses) {
  const Lines listed = linesOf(EMF_EXPORTED_SYMBOLS);
  for (const std::string& name : exportedNames(true)) {
    const std::string owner = name.substr(0, name.find("::") + 2);
    EXPECT_TRUE(std::any_of(listed.begin(), listed.end(), [&owner](const std::string& line) {
      return owner.size() > 2 && line.rfind(owner, 0) == 0;
    })) << name;
  }
}

class LoadedPlugin : public ::testing::Test {
 protected:
  LoadedPlugin() : library_(::dlopen(EMF_PLUGIN, RTLD_NOW | RTLD_LOCAL)) {
    if (library_ == nullptr) return;
    using Factory = ACE_Service_Object*(ACE_Service_Object_Exterminator*);
    auto* factory = reinterpret_cast<Factory*>(::dlsym(library_, "_make_ii_ormaiac_emf"));
    if (factory != nullptr) object_ = factory(&exterminate_);
  }
  void SetUp() override { ASSERT_NE(object_, nullptr) << ::dlerror(); }
  ~LoadedPlugin() override {
    if (object_ == nullptr) return;
    auto* slot = NS_BUNDLEMGR1::CheckIFBuf("ErrorCodeBufIf");
    for (auto* filed : slot->snapshot()) slot->remove(filed);
    auto* service = dynamic_cast<NS_BUNDLEMGR1::ServiceObjectBase*>(object_);
    if (service != nullptr) service->RemoveInterface();
    exterminate_(object_);
  }

  void* library_;
  ACE_Service_Object_Exterminator exterminate_ = nullptr;
  ACE_Service_Object* object_ = nullptr;
};

TEST_F(LoadedPlugin, ServiceIsFoundByItsPlatformType) {
  auto* service = dynamic_cast<NS_BUNDLEMGR1::ServiceObjectBase*>(object_);
  ASSERT_NE(service, nullptr);
  EXPECT_EQ(service->bundleName(), "ii_orma_corbaagent_bundle");
  EXPECT_EQ(service->GetName(), "ii_ormaiac_emf");
}

TEST_F(LoadedPlugin, InterfaceVersionIsThatOfTheHeaders) {
  const auto* version = static_cast<const int*>(::dlsym(library_, kEmfInterfaceVersionSymbol));
  ASSERT_NE(version, nullptr);
  EXPECT_EQ(*version, kEmfInterfaceVersion);
}

TEST_F(LoadedPlugin, InterfaceIsFoundByItsTypeFromAnotherLibrary) {
  auto* filed = NS_BUNDLEMGR1::CheckIFBuf("ErrorCodeBufIf")->front();
  ASSERT_NE(filed, nullptr);
  auto* errors = dynamic_cast<ErrorCodeBufIf*>(filed);
  ASSERT_NE(errors, nullptr);
  std::string text;
  errors->GetErrorInfo(text, 0x41180004);
  EXPECT_EQ(text, "unknown");
}

TEST_F(LoadedPlugin, LibraryStaysMappedAfterItsLastClose) {
  ASSERT_EQ(::dlclose(library_), 0);
  void* again = ::dlopen(EMF_PLUGIN, RTLD_NOW | RTLD_NOLOAD);
  EXPECT_NE(again, nullptr);
  if (again != nullptr) ::dlclose(again);
  library_ = nullptr;
}

}  // namespace
