#include "orma/bundle/service_interface.h"

namespace NS_BUNDLEMGR1 {

ServiceInterface::~ServiceInterface() = default;

FinalClass::~FinalClass() = default;

NULLServiceInterface::~NULLServiceInterface() = default;

std::string NULLServiceInterface::GetIFName() { return "NULLServiceInterface!"; }

int NULLServiceInterface::IsValid() { return 0; }

ServiceInterface* _g_nullServiceInterface = nullptr;

}  // namespace NS_BUNDLEMGR1
