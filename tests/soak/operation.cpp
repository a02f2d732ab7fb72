#include "operation.h"

#include "orma/metrics/outside_services.h"

namespace soak {

std::uint64_t failedExchanges() {
  using orma::metrics::Outcome;
  using orma::metrics::OutsideService;
  std::uint64_t failed = 0;
  for (const OutsideService service : {OutsideService::kRest, OutsideService::kFaultServer}) {
    const auto exchanges = orma::metrics::snapshotOf(service).exchanges;
    failed += exchanges[static_cast<std::size_t>(Outcome::kRefused)];
    failed += exchanges[static_cast<std::size_t>(Outcome::kUnreached)];
  }
  return failed;
}

std::vector<Operation> operations() {
  std::vector<Operation> all;
  addTopologyOperations(all);
  addMapOperations(all);
  addResourceOperations(all);
  addLabelOperations(all);
  addAlarmOperations(all);
  addDatabaseOperations(all);
  addOtherOperations(all);
  return all;
}

}  // namespace soak
