#include "channel_double.h"

#include <algorithm>
#include <new>
#include <utility>

#include "orma/asn1/csm_exception.h"
#include "orma/channel/asn_phy_cmd.h"
#include "outage.h"
#include "platform.h"

namespace emf::doubles {

namespace {

std::string encoded(const AsnType& object, AsnTagging tagging) {
  AsnBuf buffer(tagging);
  object.BEnc(buffer, NIClass_EncodingFormat_BER);
  return std::string(reinterpret_cast<const char*>(buffer.data()), buffer.size());
}

void decode(const std::string& bytes, AsnTagging tagging, AsnType& object) {
  AsnBuf buffer(bytes.data(), bytes.size(), tagging);
  unsigned long count = 0;
  object.BDec(buffer, count, NIClass_EncodingFormat_BER);
}

}  // namespace

void ChannelDouble::frame(const AsnType& reply, unsigned long errorCode) {
  std::unique_lock lock(mutex_);
  const AsnTagging tagging = tagging_;
  lock.unlock();
  bytes(encoded(reply, tagging), errorCode);
}

void ChannelDouble::bytes(const std::string& bytes, unsigned long errorCode) {
  std::lock_guard lock(mutex_);
  script_.push_back({true, errorCode, [bytes, tagging = tagging_](AsnType& reply) {
                       decode(bytes, tagging, reply);
                     }});
}

void ChannelDouble::frameBy(std::function<void(AsnType&)> fill) {
  std::lock_guard lock(mutex_);
  script_.push_back({true, 0, std::move(fill)});
}

void ChannelDouble::ends() { fails(0); }

void ChannelDouble::fails(unsigned long errorCode) {
  std::lock_guard lock(mutex_);
  script_.push_back({false, errorCode, nullptr});
}

void ChannelDouble::receiveThrows(Hook hook) {
  frameBy([hook = std::move(hook)](AsnType&) { hook(); });
}

void ChannelDouble::duringSend(Hook hook) {
  std::lock_guard lock(mutex_);
  duringSend_ = std::move(hook);
}

void ChannelDouble::duringDestroy(std::function<void(const AsnType& request)> hook) {
  std::lock_guard lock(mutex_);
  duringDestroy_ = std::move(hook);
}

void ChannelDouble::sendGives(bool result) {
  std::lock_guard lock(mutex_);
  sendGives_ = result;
}

void ChannelDouble::tagging(AsnTagging tagging) {
  std::lock_guard lock(mutex_);
  tagging_ = tagging;
}

std::vector<std::string> ChannelDouble::calls() const {
  std::lock_guard lock(mutex_);
  return calls_;
}

int ChannelDouble::callsOf(const std::string& call) const {
  std::lock_guard lock(mutex_);
  return static_cast<int>(std::count(calls_.begin(), calls_.end(), call));
}

std::vector<CommandSettings> ChannelDouble::commands() const {
  std::lock_guard lock(mutex_);
  return commands_;
}

std::vector<unsigned long> ChannelDouble::codesBefore() const {
  std::lock_guard lock(mutex_);
  return codesBefore_;
}

void ChannelDouble::reset() {
  std::lock_guard lock(mutex_);
  script_.clear();
  duringSend_ = nullptr;
  duringDestroy_ = nullptr;
  request_ = nullptr;
  sendGives_ = true;
  tagging_ = AsnTagging::Implicit;
  calls_.clear();
  commands_.clear();
  codesBefore_.clear();
}

void ChannelDouble::note(const char* call) {
  platform().journal.note(std::string("channel: ") + call);
  std::lock_guard lock(mutex_);
  calls_.emplace_back(call);
}

void ChannelDouble::construct(CommandSettings settings, const AsnType& body) {
  note("CAsnPhyCmd");
  if (outage("command", 1) == 0) throw std::bad_alloc();
  std::lock_guard lock(mutex_);
  settings.body = encoded(body, tagging_);
  request_ = &body;
  commands_.push_back(std::move(settings));
}

bool ChannelDouble::send() {
  note("Send");
  if (outage("send", 1) == 0) return false;
  std::unique_lock lock(mutex_);
  const Hook hook = duringSend_;
  const bool result = sendGives_;
  lock.unlock();
  if (hook) hook();
  return result;
}

bool ChannelDouble::receive(unsigned long& errorCode, AsnType& reply) {
  note("Receive");
  const int way = outage("receive", 3);
  if (way == 0) errorCode = kOutageCode;
  if (way == 1) errorCode = 0;
  if (way == 2) throw new CSM_Exception(1, 1, "", "outage", "no frame", nullptr);
  if (way != kGoesWell) return false;
  Step step{false, 0, nullptr};
  {
    std::lock_guard lock(mutex_);
    codesBefore_.push_back(errorCode);
    if (!script_.empty()) {
      step = std::move(script_.front());
      script_.pop_front();
    }
  }
  if (step.fill) step.fill(reply);
  errorCode = step.errorCode;
  return step.arrives;
}

// From a destructor: a call that there is no memory to note is not noted.
void ChannelDouble::destroy() {
  try {
    note("Destroy");
  } catch (const std::bad_alloc&) {
  }
  std::unique_lock lock(mutex_);
  const auto hook = duringDestroy_;
  const AsnType* request = request_;
  lock.unlock();
  if (hook) hook(*request);
}

}  // namespace emf::doubles

using emf::doubles::platform;

CAsnTask::~CAsnTask() = default;

bool CAsnCmd::Send(CAsnTask* task) {
  if (task != nullptr) platform().channel.note("Send with a task");
  return platform().channel.send();
}

bool CAsnCmd::Receive(unsigned long& errorCode, AsnType& reply) {
  return platform().channel.receive(errorCode, reply);
}

void CAsnCmd::Destroy() { platform().channel.destroy(); }

void CAsnPhyCmdBlockRef::NeedNextRsp() { platform().channel.note("NeedNextRsp"); }

CAsnPhyCmd::CAsnPhyCmd(unsigned long code, const AsnType& body, const CProcID& destination,
                       int timeoutSeconds, unsigned char flowControl, unsigned short priority)
    : CAsnPhyCmd(nullptr) {
  platform().channel.construct({code, destination.process, destination.instance, timeoutSeconds,
                                flowControl, priority, std::string()},
                               body);
}
