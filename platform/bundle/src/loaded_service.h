// One configured service from the loading of its library to its unloading. No exception of the
// service leaves these operations: what it did wrong comes back in words.
//
// Thread-safety: thread-compatible; the bundle manager drives it from the host's main thread.
#pragma once

#include <ace/DLL.h>

#include <string>
#include <vector>

#include "interface_filings.h"
#include "orma/bundle/bundle_mgr.h"
#include "orma/bundle/configuration.h"
#include "orma/bundle/service_object_base.h"

namespace NS_BUNDLEMGR1 {

using Reasons = std::vector<std::string>;

class LoadedService {
 public:
  explicit LoadedService(const orma::ConfiguredService& configured);
  LoadedService(const LoadedService&) = delete;
  LoadedService& operator=(const LoadedService&) = delete;
  ~LoadedService() = default;

  const orma::ConfiguredService& configured() const { return configured_; }
  // Null until load has succeeded and after unload.
  ServiceObjectBase* service() const { return service_; }

  // Library, check and factory. What failed, or nothing; after a failure everything is undone
  // already.
  Reasons load(const LibraryCheck& check);
  // What failed, or nothing. After a failure only unload may follow.
  Reasons init();
  Reasons exitService();
  Reasons unregister();
  // fini, the filings taken back, RemoveInterface, deleter, the library closed.
  Reasons unload();

 private:
  using Deleter = void (*)(void*);
  using Factory = ACE_Service_Object* (*)(Deleter*);

  void examine(const LibraryCheck& check, Reasons& reasons);
  Factory findFactory(Reasons& reasons);
  void create(Factory factory, Reasons& reasons);
  void destroyObject(Reasons& reasons);
  void closeLibrary();

  orma::ConfiguredService configured_;
  ACE_DLL library_;
  ACE_Service_Object* object_ = nullptr;  // owned; freed by deleter_ or, without one, by delete
  ServiceObjectBase* service_ = nullptr;  // object_ as what it is
  Deleter deleter_ = nullptr;
  std::vector<Filing> filings_;
};

}  // namespace NS_BUNDLEMGR1
