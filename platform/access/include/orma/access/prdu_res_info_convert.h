// The conversion of access network names, as a product brings it: a library of its own, loaded by
// name at run time ("lib", "snmpresinfo_productconvert_", the product's word, ".so"), whose one
// exported function makes the instance.
//
//   void* symbol = library.symbol("createInstanceLib");
//   auto create = reinterpret_cast<PRDU_ORMA::CreateInstanceLib>(symbol);
//   PRDU_ORMA::PrduResInfoConvert* converter = create();  // null when there is none to be had
//
// The order of the virtual operations is part of the binary interface. An instance outlives the
// close of its library: a product's library is linked to stay mapped. Whoever created an instance
// owns it.
//
// Thread-safety: thread-compatible. Nothing is thrown.
#pragma once

#include "orma/bundle/export.h"

namespace PRDU_ORMA {

class ORMA_API PrduResInfoConvert {
 public:
  PrduResInfoConvert() = default;
  PrduResInfoConvert(const PrduResInfoConvert&) = delete;
  PrduResInfoConvert& operator=(const PrduResInfoConvert&) = delete;
  virtual ~PrduResInfoConvert();
  // Called once after creation; the base does nothing and returns 0. The third place of the table,
  // behind the two of the destructor.
  virtual int Init();
};

// The type of "createInstanceLib".
using CreateInstanceLib = PrduResInfoConvert* (*)();

}  // namespace PRDU_ORMA
