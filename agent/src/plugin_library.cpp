#include "plugin_library.h"

#include <dlfcn.h>

#include <typeinfo>

#include "emfinterfaceversion.h"
#include "orma/bundle/configuration.h"
#include "orma/bundle/service_object_base.h"

namespace ormaagent {

namespace {

constexpr char kBundle[] = "ii_orma_corbaagent_bundle";
constexpr char kService[] = "ii_ormaiac_emf";
constexpr char kFactory[] = "_make_ii_ormaiac_emf";

struct Library {
  const void* base = nullptr;
  std::string file = "an unknown library";
};

Library libraryOf(const void* address) {
  Dl_info found{};
  if (address == nullptr || ::dladdr(address, &found) == 0) return {};
  return {found.dli_fbase, found.dli_fname};
}

// The libraries that this program is linked with come first in the search.
Library linkedLibrary() { return libraryOf(::dlsym(RTLD_DEFAULT, kFactory)); }

}  // namespace

std::string interfaceFault(const orma::ConfiguredService& service,
                           const std::function<void*(const char* name)>& symbol) {
  if (service.bundle != kBundle || service.service != kService) return "";
  const auto* version = static_cast<const int*>(symbol(kEmfInterfaceVersionSymbol));
  if (version != nullptr && *version == kEmfInterfaceVersion) return "";
  const std::string has =
      version == nullptr ? "no interface version" : "interface version " + std::to_string(*version);
  return "the library \"" + service.library + "\" has " + has +
         ", but this program was built for version " + std::to_string(kEmfInterfaceVersion) +
         "; install plug-in and agent of one release";
}

std::string pluginFault(const ServiceHost& host) {
  const std::string name = std::string("the service ") + kService + " of bundle " + kBundle;
  const NS_BUNDLEMGR1::ServiceObjectBase* service = host.find(kBundle, kService);
  if (service == nullptr) {
    return name + " is not running; the configuration's \"bundles\" must name it and its library";
  }
  const Library linked = linkedLibrary();
  const Library loaded = libraryOf(&typeid(*service));
  if (loaded.base == linked.base) return "";
  return name + " comes from " + loaded.file + ", but this program calls " + linked.file +
         "; name that one in the configuration's \"bundles\"";
}

}  // namespace ormaagent
