// Every operation that asks the REST service, against every way in which one exchange goes wrong:
// the stated result, the deadline kept, the records before kept or not as stated, nothing held
// afterwards, and the next call whole.
#include <gmock/gmock.h>

#include "http_answers.h"
#include "rest_faults.h"
#include "rest_fixture.h"

namespace emf::faults {
namespace {

using testing::HasSubstr;

class Rest : public RestMatrix, public testing::WithParamInterface<RestFault> {
 protected:
  void strikeEach(const RestOperation& operation) {
    const std::size_t exchanges =
        GetParam().how == RestFault::How::IsDeaf ? 1 : operation.exchanges.size();
    for (std::size_t at = 0; at < exchanges; ++at) {
      SCOPED_TRACE(placeOf(operation, at));
      std::size_t version = 0;
      for (const auto& script : GetParam().scripts(operation, operation.exchanges[at])) {
        SCOPED_TRACE(version++);
        strike(operation, at, script);
      }
      expectWhole(operation);
    }
  }

 private:
  void strike(const RestOperation& operation, std::size_t at,
              const std::function<void(const Wire&)>& script) {
    const RestFault& fault = GetParam();
    logged();
    prepare(operation, at, script);
    Outcome outcome;
    const auto took = timeOf([&] { outcome = operation.call(); });
    const bool onwards = fault.how != RestFault::How::Answers;
    EXPECT_EQ(outcome, operation.expected(fault.loss, at, onwards));
    if (fault.atDeadline) {
      EXPECT_GE(took.count(), kShortMs * 9 / 10);
      reach(peer_.port());
    }
    if (fault.loss == Loss::Failed) expectLogged(operation.exchanges[at]);
  }

  // The exchange in question has a short deadline where the fault needs one, all others a long one.
  void prepare(const RestOperation& operation, std::size_t at,
               const std::function<void(const Wire&)>& script) {
    const RestFault::How how = GetParam().how;
    if (how == RestFault::How::IsDeaf) {
      peer_.go();
      reach(deaf_.port(), kShortMs);
      return;
    }
    const bool hurries = GetParam().atDeadline;
    const bool isListing = operation.isListing;
    if (hurries && (at == 0 || isListing)) reach(peer_.port(), kLongMs, kShortMs);
    peer_.come([=](const Wire& wire, std::size_t number) {
      if (!readRequest(wire)) return;
      if (hurries && number + 1 == at && !isListing) reach(peer_.port(), kLongMs, kShortMs);
      if (hurries && number == at) reach(peer_.port());
      if (how == RestFault::How::Refuses && number + 1 == at) peer_.refuse();
      if (number == at) return script(wire);
      if (number < operation.exchanges.size()) {
        wire.send(httpAnswer(operation.exchanges[number].answer));
      }
    });
    if (how == RestFault::How::Refuses && at == 0) peer_.go();
  }

  void expectLogged(const Exchange& exchange) {
    const std::string lines = logged();
    EXPECT_THAT(lines, HasSubstr("REST request "));
    EXPECT_THAT(lines, HasSubstr(" failed: "));
    EXPECT_THAT(lines, HasSubstr(exchange.failureLine));
  }

  const DeafPeer deaf_;
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
