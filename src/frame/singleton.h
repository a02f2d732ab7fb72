// Singletons behind a raw pointer of static lifetime: made on first use under a double test with
// the process-wide ACE_Static_Object_Lock, freed only by an explicit destroy.
//
// Thread-safety: thread-safe; nothing may use the object while it is destroyed.
#pragma once

#include <ace/Guard_T.h>
#include <ace/Object_Manager_Base.h>
#include <ace/Recursive_Thread_Mutex.h>
#include <ace/Static_Object_Lock.h>

namespace emf {

// The object behind `pointer`, made by `make` if there is none. When the lock fails, the pointer
// as it stood.
template <class T, class Make>
T* singletonInstance(T*& pointer, Make make) {
  if (T* instance = __atomic_load_n(&pointer, __ATOMIC_ACQUIRE)) return instance;
  ACE_Guard<ACE_Recursive_Thread_Mutex> guard(*ACE_Static_Object_Lock::instance());
  if (guard.locked() && __atomic_load_n(&pointer, __ATOMIC_ACQUIRE) == nullptr) {
    __atomic_store_n(&pointer, make(), __ATOMIC_RELEASE);
  }
  return __atomic_load_n(&pointer, __ATOMIC_ACQUIRE);
}

// Frees the object by `destroy` and clears the pointer; does nothing when the lock fails.
template <class T, class Free>
void destroySingleton(T*& pointer, Free destroy) {
  if (__atomic_load_n(&pointer, __ATOMIC_ACQUIRE) == nullptr) return;
  ACE_Guard<ACE_Recursive_Thread_Mutex> guard(*ACE_Static_Object_Lock::instance());
  if (!guard.locked()) return;
  if (T* instance = __atomic_load_n(&pointer, __ATOMIC_ACQUIRE)) {
    destroy(instance);
    __atomic_store_n(&pointer, static_cast<T*>(nullptr), __ATOMIC_RELEASE);
  }
}

}  // namespace emf
