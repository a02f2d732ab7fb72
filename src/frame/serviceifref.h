// A typed reference to a service interface of another bundle, made for one lookup:
//
//   ServiceIFRef<NS_LOG_SERVICE1::LogSvcInterface> reference;
//   NS_LOG_SERVICE1::LogSvcInterface* service = reference.Get(nullptr);
//
// The interface is found in the shared slot of its name; while the slot is empty, by walking the
// services of the bundles, and then filed in the slot.
//
// Thread-safety: thread-compatible; references of several threads may work at once.
#pragma once

#include <ace/Guard_T.h>

#include <list>
#include <map>
#include <string>
#include <vector>

#include "orma/bundle/bundle_mgr.h"
#include "orma/bundle/interface_slot.h"
#include "processexception.h"

template <class T>
class ServiceIFRef {
 public:
  ServiceIFRef() {
    ensureNullInterface();
    // Every interface looked up here is the log service's.
    if (auto* slot = NS_BUNDLEMGR1::CheckIFBuf("LogSvcInterface")) buffer = slot;
    mutex = &NS_BUNDLEMGR1::_g_actualmutex;
    nullInterface = &NS_BUNDLEMGR1::_g_nullServiceInterface;
  }

  // The first matching interface; null when the mutex cannot be had. When `all` is given, it is
  // replaced by everything that the slot holds. Throws InterfaceNotExistException when no service
  // offers the interface.
  T* Get(std::vector<T*>* all) {
    if (T* filed = firstFiled(all)) return filed;
    std::list<NS_BUNDLEMGR1::Bundle*> bundles = collectBundles();
    {
      ACE_Guard<ACE_Thread_Mutex> guard(*mutex);
      if (!guard.locked()) return nullptr;
      if (T* filed = firstFiled(all)) return filed;
      for (NS_BUNDLEMGR1::Bundle* bundle : bundles) {
        if (T* match = walk(*bundle)) return match;
      }
    }
    bundles.clear();
    if (T* filed = firstFiled(all)) return filed;
    InterfaceNotExistException notExist;
    throw notExist;
  }

  NS_BUNDLEMGR1::InterfaceSlot* buffer = nullptr;  // shared, not owned; null: nothing to fill
  ACE_Thread_Mutex* mutex = nullptr;
  std::string bundleName;   // bundle to search; empty: every bundle
  std::string serviceName;  // service to search; empty: every service
  NS_BUNDLEMGR1::ServiceInterface** nullInterface = nullptr;

 private:
  using Services = std::map<std::string, NS_BUNDLEMGR1::ServiceObjectBase*>;

  static void ensureNullInterface() {
    auto*& slot = NS_BUNDLEMGR1::_g_nullServiceInterface;
    if (__atomic_load_n(&slot, __ATOMIC_ACQUIRE) != nullptr) return;
    // A lock that cannot be had does not stop the creation.
    ACE_Guard<ACE_Thread_Mutex> guard(NS_BUNDLEMGR1::_g_actualmutex);
    if (__atomic_load_n(&slot, __ATOMIC_ACQUIRE) != nullptr) return;
    __atomic_store_n(&slot, new NS_BUNDLEMGR1::NULLServiceInterface, __ATOMIC_RELEASE);
  }

  T* firstFiled(std::vector<T*>* all) const {
    if (buffer == nullptr || buffer->empty()) return nullptr;
    if (all != nullptr) {
      all->clear();
      for (auto* filed : buffer->snapshot()) {
        if (T* typed = dynamic_cast<T*>(filed)) all->push_back(typed);
      }
    }
    return dynamic_cast<T*>(buffer->front());
  }

  std::list<NS_BUNDLEMGR1::Bundle*> collectBundles() const {
    std::list<NS_BUNDLEMGR1::Bundle*> bundles;
    auto* manager = NS_BUNDLEMGR1::BundleMgr::Instance();
    if (bundleName.empty()) {
      manager->GetBundles(bundles);
    } else if (auto* bundle = manager->FindBundle(bundleName)) {
      bundles.push_back(bundle);
    }
    return bundles;
  }

  // The match that ends the search, or null. A first match for an empty slot is filed, and the
  // walk goes on: only a further match ends it.
  T* walk(NS_BUNDLEMGR1::Bundle& bundle) {
    Services services;
    bundle.GetServices(services);
    if (!serviceName.empty()) return consider(services[serviceName]);
    for (auto& entry : services) {
      if (T* match = consider(entry.second)) return match;
    }
    return nullptr;
  }

  T* consider(NS_BUNDLEMGR1::ServiceObjectBase* service) {
    if (service == nullptr) return nullptr;
    T* match = dynamic_cast<T*>(service->GetInterface());
    if (match == nullptr) return nullptr;
    if (buffer == nullptr || !buffer->empty()) return match;
    buffer->push_back(match);
    return nullptr;
  }
};
