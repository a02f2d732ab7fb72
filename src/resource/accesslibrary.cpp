// The access product's name conversion, loaded by name.
#include <ace/DLL.h>

#include <string>

#include "emfresinterface.h"
#include "orma/access/prdu_res_info_convert.h"
#include "watchedcall.h"

namespace {

constexpr char kPrefix[] = "snmpresinfo_productconvert_";
constexpr char kProduct[] = "access";

constexpr int kLazyAndGlobal = 0x101;

// Makes the instance; whether there is one.
bool makeInstance(ACE_DLL& library, PRDU_ORMA::PrduResInfoConvert*& instance) {
  void* symbol = library.symbol("createInstanceLib");
  if (symbol == nullptr) return false;
  instance = reinterpret_cast<PRDU_ORMA::CreateInstanceLib>(symbol)();
  if (instance == nullptr) return false;
  instance->Init();
  return true;
}

}  // namespace

// Closed in every case, also under an instance that lives on: meant so. ACE keeps what was opened
// with `false` mapped until it ends itself, and a product's library is linked to stay mapped.
std::int64_t EMFResMgrI::initAccessFdnConvertDll(PRDU_ORMA::PrduResInfoConvert*& instance) {
  emf::WatchedCall call("EMFResMgrI::initAccessFdnConvertDll");
  ACE_DLL library(true);
  const std::string name = std::string("lib") + kPrefix + kProduct + ".so";
  const bool made =
      library.open(name.c_str(), kLazyAndGlobal, false) == 0 && makeInstance(library, instance);
  library.close();
  return call.result(made ? 0 : 1);
}
