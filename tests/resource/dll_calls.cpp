#include "dll_calls.h"

#include <ace/DLL.h>

namespace {

std::string& pathInstead() {
  static auto& path = *new std::string;
  return path;
}

std::vector<std::string>& calls() {
  static auto& recorded = *new std::vector<std::string>;
  return recorded;
}

std::string word(bool value) { return value ? "true" : "false"; }

}  // namespace

namespace emf::test {

void openInstead(const std::string& path) {
  pathInstead() = path;
  calls().clear();
}

const std::vector<std::string>& dllCalls() { return calls(); }

}  // namespace emf::test

extern "C" {

void __real__ZN7ACE_DLLC1Eb(ACE_DLL* self, bool closeOnDestruction);
void __wrap__ZN7ACE_DLLC1Eb(ACE_DLL* self, bool closeOnDestruction) {
  calls().push_back("construct " + word(closeOnDestruction));
  __real__ZN7ACE_DLLC1Eb(self, closeOnDestruction);
}

void __real__ZN7ACE_DLLD1Ev(ACE_DLL* self);
void __wrap__ZN7ACE_DLLD1Ev(ACE_DLL* self) {
  calls().push_back("destroy");
  __real__ZN7ACE_DLLD1Ev(self);
}

int __real__ZN7ACE_DLL4openEPKcib(ACE_DLL* self, const char* name, int mode, bool close);
int __wrap__ZN7ACE_DLL4openEPKcib(ACE_DLL* self, const char* name, int mode, bool close) {
  calls().push_back("open " + std::string(name) + " " + std::to_string(mode) + " " + word(close));
  return __real__ZN7ACE_DLL4openEPKcib(self, pathInstead().c_str(), mode, close);
}

void* __real__ZN7ACE_DLL6symbolEPKci(ACE_DLL* self, const char* name, int ignoreErrors);
void* __wrap__ZN7ACE_DLL6symbolEPKci(ACE_DLL* self, const char* name, int ignoreErrors) {
  calls().push_back("symbol " + std::string(name));
  return __real__ZN7ACE_DLL6symbolEPKci(self, name, ignoreErrors);
}

int __real__ZN7ACE_DLL5closeEv(ACE_DLL* self);
int __wrap__ZN7ACE_DLL5closeEv(ACE_DLL* self) {
  calls().push_back("close");
  return __real__ZN7ACE_DLL5closeEv(self);
}

}  // extern "C"
