#include "devicelist.h"

#include <algorithm>
#include <cstdlib>

#include "subnetlist.h"

namespace emf {
namespace {

// The leading decimal number, cut to `int`; 0 when there is none.
int decimal(const char* text) { return static_cast<int>(std::strtol(text, nullptr, 10)); }

// By way of long, so that the sign fills the upper half.
unsigned long widened(int number) { return static_cast<unsigned long>(static_cast<long>(number)); }

}  // namespace

std::string JsonDevices::nativeId(std::size_t index) const {
  return textMember(nodes_[index], "nativeId");
}

bool JsonDevices::origin(std::size_t index, LinkTraces&) const {
  return decimal(textMember(nodes_[index], "origin").c_str()) == 1;
}

std::string JsonDevices::parentKey(std::size_t index) const {
  return subnetKey(textMember(nodes_[index], "parentId"));
}

unsigned long JsonDevices::number(std::size_t, const std::string& nativeId) const {
  return widened(decimal(nativeId.c_str() + nativeId.find('=') + 1));
}

bool RecordDevices::origin(std::size_t index, LinkTraces& traces) const {
  return isOriginElement(devices_[index].asnKeyVal, traces);
}

unsigned long RecordDevices::number(std::size_t index, const std::string&) const {
  return widened(devices_[index].deviceId);
}

bool isRealElement(const std::string& nativeId) {
  const std::size_t element = nativeId.find("NE=");
  return element != std::string::npos && nativeId.find(',', element) == std::string::npos;
}

bool isOriginElement(const std::vector<std::pair<std::string, std::string>>& keyValues,
                     LinkTraces& traces) {
  const auto field = std::find_if(keyValues.begin(), keyValues.end(),
                                  [](const auto& keyValue) { return keyValue.first == "Origin"; });
  if (field != keyValues.end()) return field->second == "1";
  traces.noOriginField();
  return true;
}

}  // namespace emf
