// One face over the two kinds of device lists: topology node objects and southbound records.
//
// Thread-safety: immutable views; the list must outlive its view. Reading a JSON member of a type
// that has no text form raises Json::LogicError.
#pragma once

#include <json/value.h>

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "linktraces.h"
#include "southrecords.h"

namespace emf {

class DeviceList {
 public:
  virtual ~DeviceList() = default;
  virtual std::size_t size() const = 0;
  virtual std::string nativeId(std::size_t index) const = 0;
  // Whether it is an origin element; may trace.
  virtual bool origin(std::size_t index, LinkTraces& traces) const = 0;
  virtual std::string parentKey(std::size_t index) const = 0;
  // An `int`, widened with its sign.
  virtual unsigned long number(std::size_t index, const std::string& nativeId) const = 0;
};

class JsonDevices : public DeviceList {
 public:
  explicit JsonDevices(const std::vector<Json::Value>& nodes) : nodes_(nodes) {}
  std::size_t size() const override { return nodes_.size(); }
  std::string nativeId(std::size_t index) const override;
  // Without the member it is none, unlike a record.
  bool origin(std::size_t index, LinkTraces& traces) const override;
  std::string parentKey(std::size_t index) const override;
  // The number behind the first "=" of the native id.
  unsigned long number(std::size_t index, const std::string& nativeId) const override;

 private:
  const std::vector<Json::Value>& nodes_;
};

class RecordDevices : public DeviceList {
 public:
  explicit RecordDevices(const std::vector<SouthDevice>& devices) : devices_(devices) {}
  std::size_t size() const override { return devices_.size(); }
  std::string nativeId(std::size_t index) const override { return devices_[index].nativeId; }
  bool origin(std::size_t index, LinkTraces& traces) const override;
  std::string parentKey(std::size_t index) const override { return devices_[index].submapId; }
  unsigned long number(std::size_t index, const std::string& nativeId) const override;

 private:
  const std::vector<SouthDevice>& devices_;
};

// Whether a native id names a network element and not a part of one: "NE=" with no "," behind it.
bool isRealElement(const std::string& nativeId);
// Whether the first "Origin" of the list is "1". Meant so: a list without one counts as an origin
// element, and that is traced, while a JSON object without the member does not.
bool isOriginElement(const std::vector<std::pair<std::string, std::string>>& keyValues,
                     LinkTraces& traces);

}  // namespace emf
