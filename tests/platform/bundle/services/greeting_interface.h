// An interface whose type information has no home: each library that uses it has its own copy.
#pragma once

#include <string>

#include "orma/bundle/service_interface.h"

class ORMA_API GreetingInterface : public NS_BUNDLEMGR1::ServiceInterface {
 public:
  virtual std::string greeting() { return "hello"; }
};
