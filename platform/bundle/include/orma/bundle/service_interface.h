// The root of every interface that one bundle offers to another, and the placeholder for 'none'.
//
// An interface is found by name (interface_slot.h) and then by dynamic_cast, so each interface
// class keeps its type information visible: mark it ORMA_API and define its destructor in one
// library.
//
// Thread-safety: immutable once filed.
#pragma once

#include <string>

#include "orma/bundle/export.h"

namespace NS_BUNDLEMGR1 {

class ORMA_API ServiceInterface {
 public:
  ServiceInterface() = default;
  ServiceInterface(const ServiceInterface&) = delete;
  ServiceInterface& operator=(const ServiceInterface&) = delete;
  virtual ~ServiceInterface();
  // The name of the implementation, for people.
  virtual std::string GetIFName() = 0;
  // 1 when calls do something, 0 for a placeholder.
  virtual int IsValid() = 0;
};

// A virtual base of this type with a private constructor keeps a class from being derived from.
class ORMA_API FinalClass {
 protected:
  FinalClass() = default;
  virtual ~FinalClass();
};

// Stands in where there is no interface, so that callers hold a pointer that can be asked.
class ORMA_API NULLServiceInterface : public ServiceInterface, public virtual FinalClass {
 public:
  NULLServiceInterface() = default;
  ~NULLServiceInterface() override;
  std::string GetIFName() override;  // "NULLServiceInterface!"
  int IsValid() override;            // 0
};

// The process-wide placeholder; null until someone creates it under _g_actualmutex. Read and
// written atomically (__atomic builtins). Lives until the process ends.
extern ORMA_API ServiceInterface* _g_nullServiceInterface;

}  // namespace NS_BUNDLEMGR1
