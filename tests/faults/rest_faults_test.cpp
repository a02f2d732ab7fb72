// Every operation that asks the REST service, against every way in which one exchange goes wrong:
// the stated result, the deadline kept, the records before kept or not as stated, nothing held
// afterwards, and the next call whole.
#include <gmock/gmock.h>

#include <algorithm>

#include "http_answers.h"
#include "loopback_ports.h"
#include "rest_faults.h"
#include "rest_fixture.h"

namespace emf::faults {
namespace {

using testing::HasSubstr;

using Script = std::function<void(const Wire&)>;

class Rest : public RestMatrix, public testing::WithParamInterface<RestFault> {
 protected:
  void strikeEach(const RestOperation& operation) {
    const std::size_t exchanges =
        GetParam().how == RestFault::How::IsDeaf ? 1 : operation.exchanges.size();
    for (std::size_t at = 0; at < exchanges; ++at) {
      SCOPED_TRACE(placeOf(operation, at));
      const std::size_t versions = scriptsOf(operation, at).size();
      // Each operation meets some versions of the fault, each version many operations.
      for (std::size_t i = 0; i < std::min(versions, kVersions); ++i) {
        strike(operation, at, met_++ % versions);
      }
      expectWhole(operation);
    }
  }

 private:
  static constexpr std::size_t kVersions = 4;

  std::vector<Script> scriptsOf(const RestOperation& operation, std::size_t at) const {
    return GetParam().scripts(operation, operation.exchanges[at]);
  }
  // Whether what is wrong with one exchange is wrong with all behind it: then there is no moment at
  // which a deadline would have to change back.
  static bool lasts() { return GetParam().how != RestFault::How::Answers || GetParam().atDeadline; }

  void strike(const RestOperation& operation, std::size_t at, std::size_t version) {
    SCOPED_TRACE("version " + std::to_string(version));
    const RestFault& fault = GetParam();
    logged();
    prepare(operation, at, version);
    Outcome outcome;
    const auto took = timeOf([&] { outcome = operation.call(); });
    EXPECT_EQ(outcome, operation.expected(fault.loss, at, lasts()));
    if (fault.atDeadline) {
      EXPECT_GE(took.count(), kShortMs * 9 / 10);
      reach(peer_.port());
    }
    if (fault.loss == Loss::Failed) expectLogged(operation.exchanges[at]);
  }

  void prepare(const RestOperation& operation, std::size_t at, std::size_t version) {
    const RestFault::How how = GetParam().how;
    if (how == RestFault::How::IsDeaf) {
      peer_.go();
      reach(deaf_.port(), kShortMs);
      return;
    }
    const bool hurries = GetParam().atDeadline;
    if (hurries && (at == 0 || operation.isListing)) reach(peer_.port(), kLongMs, kShortMs);
    peer_.come([=](const Wire& wire, std::size_t number) {
      if (!readRequest(wire) || number >= operation.exchanges.size()) return;
      // Before the answer goes out, and so before the next request comes.
      if (number + 1 == at && hurries && !operation.isListing) {
        reach(peer_.port(), kLongMs, kShortMs);
      }
      if (number + 1 == at && how == RestFault::How::Refuses) peer_.refuse();
      if (number == at || (number > at && lasts())) {
        return scriptsOf(operation, number)[version](wire);
      }
      wire.send(httpAnswer(operation.exchanges[number].answer));
    });
    if (how == RestFault::How::Refuses && at == 0) peer_.go();
  }

  void expectLogged(const Exchange& exchange) {
    const std::string lines = logged();
    EXPECT_THAT(lines, HasSubstr("REST request "));
    EXPECT_THAT(lines, HasSubstr(" failed: "));
    EXPECT_THAT(lines, HasSubstr(exchange.failureLine));
  }

  const DeafPort deaf_;
  std::size_t met_ = 0;
};

TEST_P(Rest, Cell) {
  const Holdings before = settled();
  for (const RestOperation& operation : restOperations()) strikeEach(operation);
  EXPECT_EQ(settled(), before);
}

INSTANTIATE_TEST_SUITE_P(FaultMatrix, Rest, testing::ValuesIn(restFaults()),
                         [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace emf::faults
