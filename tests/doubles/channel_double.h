// The command channel: each exchange answered by script, every call recorded.
//
//   platform().channel.frame(reply);     // encoded now, decoded by Receive
//   platform().channel.ends();           // false, code 0
//   platform().channel.fails(6105);      // false, that code
//   EXPECT_THAT(platform().channel.calls(), ElementsAre("CAsnPhyCmd", "Send", "Receive", …));
//
// Receive uses the script up in order; without one left it ends the exchange.
//
// Thread-safety: thread-safe. Hooks run without a lock; what they throw leaves the call.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <vector>

#include "orma/asn1/asn_buf.h"
#include "orma/asn1/asn_type.h"

namespace emf::doubles {

struct CommandSettings {
  unsigned long code;
  std::uint32_t process;
  std::uint32_t instance;
  int timeoutSeconds;
  unsigned char flowControl;
  unsigned short priority;
  std::string body;  // as encoded
};

class ChannelDouble {
 public:
  using Hook = std::function<void()>;

  void frame(const AsnType& reply, unsigned long errorCode = 0);
  // A frame of these bytes.
  void bytes(const std::string& bytes, unsigned long errorCode = 0);
  // A frame that sets the reply by itself.
  void frameBy(std::function<void(AsnType& reply)> fill);
  void ends();
  void fails(unsigned long errorCode);
  // A Receive that throws what the hook throws.
  void receiveThrows(Hook hook);
  // Runs inside Send; what it throws leaves it.
  void duringSend(Hook hook);
  // Runs inside Destroy, on the request that the command was made with; throws nothing.
  void duringDestroy(std::function<void(const AsnType& request)> hook);
  // What Send gives; true after a reset.
  void sendGives(bool result);
  // How context tags stand; implicit after a reset.
  void tagging(AsnTagging tagging);

  // Every call in order: "CAsnPhyCmd", "Send", "Receive", "NeedNextRsp", "Destroy".
  std::vector<std::string> calls() const;
  int callsOf(const std::string& call) const;
  // Of every command that was made.
  std::vector<CommandSettings> commands() const;
  // The error code variable as each Receive found it.
  std::vector<unsigned long> codesBefore() const;
  void reset();

  void note(const char* call);
  void construct(CommandSettings settings, const AsnType& body);
  bool send();
  bool receive(unsigned long& errorCode, AsnType& reply);
  void destroy();

 private:
  struct Step {
    bool arrives;
    unsigned long errorCode;
    std::function<void(AsnType&)> fill;
  };
  mutable std::mutex mutex_;
  std::deque<Step> script_;
  Hook duringSend_;
  std::function<void(const AsnType&)> duringDestroy_;
  const AsnType* request_ = nullptr;  // of the last command; the caller's
  bool sendGives_ = true;
  AsnTagging tagging_ = AsnTagging::Implicit;
  std::vector<std::string> calls_;
  std::vector<CommandSettings> commands_;
  std::vector<unsigned long> codesBefore_;
};

}  // namespace emf::doubles
