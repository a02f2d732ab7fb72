#include "rest_operations.h"

#include "rest_operation_groups.h"

namespace emf::faults {
namespace {

void append(std::vector<std::string>& to, const std::vector<std::string>& from) {
  to.insert(to.end(), from.begin(), from.end());
}

}  // namespace

const std::vector<RestOperation>& restOperations() {
  static const std::vector<RestOperation> operations = [] {
    std::vector<RestOperation> all;
    addDeviceOperations(all);
    addTopologyOperations(all);
    addAlarmOperations(all);
    addLabelOperations(all);
    addResourceOperations(all);
    return all;
  }();
  return operations;
}

Outcome RestOperation::ended(const std::string& result, const std::vector<std::string>& read,
                             bool complete) const {
  Outcome outcome;
  outcome.result = result;
  if (complete) outcome.records = front;
  if (!replaces || read.empty()) append(outcome.records, before);
  append(outcome.records, read);
  if (complete) append(outcome.records, closing);
  return outcome;
}

Outcome RestOperation::expected(Loss loss, std::size_t at, bool onwards) const {
  std::vector<std::string> read;
  for (std::size_t i = 0; i < exchanges.size(); ++i) {
    const Exchange& exchange = exchanges[i];
    const bool isLost = loss != Loss::None && (i == at || (onwards && i > at));
    if (!isLost || exchange.alone) {
      append(read, isLost ? exchange.lost : exchange.records);
      continue;
    }
    const bool isList = loss == Loss::Null || loss == Loss::NoList;
    if (counted && loss != Loss::Failed) {
      if (i == 0 && loss != Loss::NoList) break;  // the total is lost with it
    } else if (isList && results.noList.empty()) {
      if (loss == Loss::Null) break;
    } else {
      if (allOrNone) read.clear();
      const std::string& noList = isList ? results.noList : results.noObject;
      return ended(loss == Loss::Failed ? results.failed : noList, read, false);
    }
  }
  return ended(results.success, read, true);
}

}  // namespace emf::faults
