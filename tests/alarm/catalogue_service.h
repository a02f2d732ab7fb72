// A service of alarm definitions or reasons, of any size, that can fail on any page.
//
//   CatalogueService service(10001);
//   service.failsAt(5000);
//   service.start();  // scripts the platform's double
//
// Thread-safety: thread-compatible.
#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>
#include <vector>

#include "platform.h"

namespace emf::test {

class CatalogueService {
 public:
  explicit CatalogueService(std::int64_t size) : size_(size) {}

  void failsAt(std::int64_t offset) { failingOffset_ = offset; }
  void start() {
    doubles::platform().alarms.answersBy(
        [this](const doubles::AlarmQuery& query, Json::Value& answer) {
          return respond(doubles::json(query.body), answer);
        });
  }
  // Of every page that was asked for.
  const std::vector<std::int64_t>& offsets() const { return offsets_; }

  // Element `index`, as definition and as reason at once.
  static Json::Value element(std::int64_t index) {
    Json::Value element;
    element["alarmId"] = element["alarmGroupId"] = std::to_string(index);
    element["eventType"] = element["severity"] = element["reasonId"] = Json::Int64{index};
    element["alarmName"] = element["causes"] = "name " + std::to_string(index);
    element["description"] = element["repairAction"] = "about " + std::to_string(index);
    return element;
  }

 private:
  bool respond(const Json::Value& query, Json::Value& answer) {
    const std::int64_t offset = query["offset"].asInt64();
    offsets_.push_back(offset);
    if (offset == failingOffset_) return false;
    // Later totals are not looked at.
    answer["totalCount"] = offset == 0 ? Json::Int64{size_} : Json::Int64{1};
    answer["definitions"] = Json::arrayValue;
    const std::int64_t end = std::min(size_, offset + query["limit"].asInt64());
    for (std::int64_t index = offset; index < end; ++index) {
      answer["definitions"].append(element(index));
    }
    return true;
  }

  std::int64_t size_;
  std::optional<std::int64_t> failingOffset_;
  std::vector<std::int64_t> offsets_;
};

}  // namespace emf::test
