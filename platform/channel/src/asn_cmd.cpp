#include "orma/channel/asn_cmd.h"

#include "exchange.h"
#include "orma/bundle/configuration.h"
#include "orma/channel/asn_phy_cmd.h"

namespace {

using orma::channel::Command;
using orma::channel::Exchange;

Exchange* makeExchange(const Command& command, const AsnType& body) {
  const orma::channel::Settings settings(*orma::Configuration::current());
  return new Exchange(command, body, settings);
}

}  // namespace

CAsnTask::~CAsnTask() = default;

bool CAsnCmd::Send(CAsnTask*) { return exchange_->send(); }

bool CAsnCmd::Receive(unsigned long& errorCode, AsnType& reply) {
  return exchange_->receive(errorCode, reply);
}

void CAsnCmd::Destroy() {
  delete exchange_;
  exchange_ = nullptr;
}

void CAsnPhyCmdBlockRef::NeedNextRsp() { exchange_->askNext(); }

CAsnPhyCmd::CAsnPhyCmd(unsigned long code, const AsnType& body, const CProcID& destination,
                       int timeoutSeconds, unsigned char flowControl, unsigned short priority)
    : CAsnPhyCmd(makeExchange({static_cast<std::uint32_t>(code), destination, timeoutSeconds,
                               flowControl != 0, priority},
                              body)) {}
