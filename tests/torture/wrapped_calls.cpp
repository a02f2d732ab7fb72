// Functions of the system and of ACE, wrapped by the linker, that fail on demand (outage.h).
#include <ace/DLL.h>
#include <ace/Task.h>
#include <dirent.h>
#include <fcntl.h>
#include <pthread.h>
#include <sys/mman.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <string>

#include "failing_allocation.h"
#include "orma/bundle/interface_slot.h"
#include "outage.h"
#include "sleeps.h"

namespace {

// In the platform's table of interface slots, whose lock is none of the plug-in's and which the
// standard library does not expect to fail.
thread_local bool isAmongSlots = false;

struct AmongSlots {
  AmongSlots() { isAmongSlots = true; }
  AmongSlots(const AmongSlots&) = delete;
  AmongSlots& operator=(const AmongSlots&) = delete;
  ~AmongSlots() { isAmongSlots = false; }
};

// Whether this call is the one that is to fail; errno is set then.
bool fails(const char* kind, int error) {
  if (emf::doubles::outage(kind, 1) == emf::doubles::kGoesWell) return false;
  errno = error;
  return true;
}

}  // namespace

extern "C" {

int __real__ZN6ACE_OS10mutex_lockEP15pthread_mutex_t(pthread_mutex_t* mutex);
int __wrap__ZN6ACE_OS10mutex_lockEP15pthread_mutex_t(pthread_mutex_t* mutex) {
  return fails("mutex", EINVAL) ? -1 : __real__ZN6ACE_OS10mutex_lockEP15pthread_mutex_t(mutex);
}

int __real_pthread_rwlock_rdlock(pthread_rwlock_t* lock);
int __wrap_pthread_rwlock_rdlock(pthread_rwlock_t* lock) {
  const bool failing = !isAmongSlots && fails("read lock", EINVAL);
  return failing ? EINVAL : __real_pthread_rwlock_rdlock(lock);
}

int __real_pthread_rwlock_wrlock(pthread_rwlock_t* lock);
int __wrap_pthread_rwlock_wrlock(pthread_rwlock_t* lock) {
  const bool failing = !isAmongSlots && fails("write lock", EINVAL);
  return failing ? EINVAL : __real_pthread_rwlock_wrlock(lock);
}

NS_BUNDLEMGR1::InterfaceSlot*
__real__ZN13NS_BUNDLEMGR110CheckIFBufERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEE(
    const std::string& name);
NS_BUNDLEMGR1::InterfaceSlot*
__wrap__ZN13NS_BUNDLEMGR110CheckIFBufERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEE(
    const std::string& name) {
  const AmongSlots guard;
  return __real__ZN13NS_BUNDLEMGR110CheckIFBufERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEE(
      name);
}

void __real__ZN13NS_BUNDLEMGR18SetIFBufERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEEPNS_16ServiceInterfaceE(
    const std::string& name, NS_BUNDLEMGR1::ServiceInterface* interface);
void __wrap__ZN13NS_BUNDLEMGR18SetIFBufERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEEPNS_16ServiceInterfaceE(
    const std::string& name, NS_BUNDLEMGR1::ServiceInterface* interface) {
  const AmongSlots guard;
  __real__ZN13NS_BUNDLEMGR18SetIFBufERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEEPNS_16ServiceInterfaceE(
      name, interface);
}

// ACE crashes over a description of a thread that there was no memory for.
int __real__ZN13ACE_Task_Base8activateEliiliPS_PmPPvS1_S1_PPKc(
    ACE_Task_Base* self, long flags, int count, int force, long priority, int group,
    ACE_Task_Base* task, ACE_hthread_t* handles, void** stacks, std::size_t* sizes,
    ACE_thread_t* ids, const char** names);
int __wrap__ZN13ACE_Task_Base8activateEliiliPS_PmPPvS1_S1_PPKc(
    ACE_Task_Base* self, long flags, int count, int force, long priority, int group,
    ACE_Task_Base* task, ACE_hthread_t* handles, void** stacks, std::size_t* sizes,
    ACE_thread_t* ids, const char** names) {
  const emf::test::Sheltered shelter;
  return __real__ZN13ACE_Task_Base8activateEliiliPS_PmPPvS1_S1_PPKc(
      self, flags, count, force, priority, group, task, handles, stacks, sizes, ids, names);
}

std::FILE* __real_fopen(const char* path, const char* mode);
std::FILE* __wrap_fopen(const char* path, const char* mode) {
  return fails("file", EACCES) ? nullptr : __real_fopen(path, mode);
}

std::FILE* __real_fdopen(int descriptor, const char* mode);
std::FILE* __wrap_fdopen(int descriptor, const char* mode) {
  return fails("stream", ENOMEM) ? nullptr : __real_fdopen(descriptor, mode);
}

std::size_t __real_fwrite(const void* bytes, std::size_t size, std::size_t count, std::FILE* file);
std::size_t __wrap_fwrite(const void* bytes, std::size_t size, std::size_t count, std::FILE* file) {
  return fails("writing", ENOSPC) ? 0 : __real_fwrite(bytes, size, count, file);
}

int __real_open(const char* path, int flags, ...);
int __wrap_open(const char* path, int flags, ...) {
  // Nothing here makes files in this way.
  return fails("descriptor", EMFILE) ? -1 : __real_open(path, flags);
}

int __real_fstat(int descriptor, struct stat* status);
int __wrap_fstat(int descriptor, struct stat* status) {
  return fails("file status", EIO) ? -1 : __real_fstat(descriptor, status);
}

char* __real_realpath(const char* path, char* resolved);
char* __wrap_realpath(const char* path, char* resolved) {
  if (!fails("path", ENOENT)) return __real_realpath(path, resolved);
  resolved[0] = '\0';
  return nullptr;
}

DIR* __real_opendir(const char* path);
DIR* __wrap_opendir(const char* path) {
  return fails("directory", EMFILE) ? nullptr : __real_opendir(path);
}

dirent* __real_readdir(DIR* directory);
dirent* __wrap_readdir(DIR* directory) {
  return fails("directory entry", EIO) ? nullptr : __real_readdir(directory);
}

int __real_vsnprintf_s(char* dest, std::size_t destMax, std::size_t count, const char* format,
                       va_list arguments) __attribute__((format(printf, 4, 0)));
int __wrap_vsnprintf_s(char* dest, std::size_t destMax, std::size_t count, const char* format,
                       va_list arguments) __attribute__((format(printf, 4, 0)));
int __wrap_vsnprintf_s(char* dest, std::size_t destMax, std::size_t count, const char* format,
                       va_list arguments) {
  if (!fails("formatting a list", EINVAL)) {
    return __real_vsnprintf_s(dest, destMax, count, format, arguments);
  }
  dest[0] = '\0';
  return -1;
}

void* __real_mmap(void* address, std::size_t size, int protection, int flags, int file, off_t at);
void* __wrap_mmap(void* address, std::size_t size, int protection, int flags, int file, off_t at) {
  return fails("mapping", ENOMEM) ? MAP_FAILED
                                  : __real_mmap(address, size, protection, flags, file, at);
}

// ACE's loading of libraries: it is led to the product that the tests have, and has all the memory
// that it wants, as it leaves a table behind that it falls over itself when it lacks any.
int __real__ZN7ACE_DLL4openEPKcib(ACE_DLL* self, const char* name, int mode, bool close);
int __wrap__ZN7ACE_DLL4openEPKcib(ACE_DLL* self, const char*, int mode, bool close) {
  if (fails("library", ENOENT)) return -1;
  const emf::test::Sheltered shelter;
  return __real__ZN7ACE_DLL4openEPKcib(self, EMF_TORTURED_PRODUCT, mode, close);
}

void* __real__ZN7ACE_DLL6symbolEPKci(ACE_DLL* self, const char* name, int ignoreErrors);
void* __wrap__ZN7ACE_DLL6symbolEPKci(ACE_DLL* self, const char* name, int ignoreErrors) {
  if (fails("symbol", ENOENT)) return nullptr;
  const emf::test::Sheltered shelter;
  return __real__ZN7ACE_DLL6symbolEPKci(self, name, ignoreErrors);
}

int __real__ZN7ACE_DLL5closeEv(ACE_DLL* self);
int __wrap__ZN7ACE_DLL5closeEv(ACE_DLL* self) {
  const emf::test::Sheltered shelter;
  return __real__ZN7ACE_DLL5closeEv(self);
}

int __wrap_nanosleep(const timespec*, timespec*) {
  emf::torture::sleepInstead();
  return 0;
}
}
