#include "emftoporecords.h"

Device::Device() : id(0), mainType(0), subType(0) {}

Device::~Device() = default;
