// A reply frame of 1,000 alarms of about 200 bytes: decoded and encoded by the plug-in's messages,
// against asn1c's generated code and OpenSSL's template decoder on the same bytes. Decoding makes
// and frees the values; encoding writes into a buffer that is there. A ratio is our time by theirs.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "alarm_frame.h"
#include "alarm_peers.h"
#include "faultmessages.h"
#include "paired.h"

namespace {

constexpr int kItems = 1000;
constexpr int kRepeats = 10;  // of one measured body, to stand above the clock

const std::string& frameBytes() {
  static const std::string bytes = alarmFrame(kItems);
  return bytes;
}

void decodeOurs(AsnSvrToOtherQryResp& reply) {
  AsnBuf buffer(frameBytes().data(), frameBytes().size());
  unsigned long count = 0;
  reply.BDec(buffer, count, NIClass_EncodingFormat_BER);
}

template <class Body>
auto repeated(Body body) {
  return [body] {
    for (int i = 0; i < kRepeats; ++i) body();
  };
}

template <class Peer>
void decodeAgainst(benchmark::State& state) {
  std::size_t ours = 0;
  std::size_t theirs = 0;
  comparePaired(state, repeated([&] {
                  AsnSvrToOtherQryResp reply;
                  decodeOurs(reply);
                  ours = reply.lstItem.count();
                }),
                repeated([&] { theirs = Peer(frameBytes()).items(); }));
  if (ours != kItems || theirs != kItems) state.SkipWithError("a frame was not read whole");
  state.counters["frame_bytes"] = static_cast<double>(frameBytes().size());
}

template <class Peer>
void encodeAgainst(benchmark::State& state) {
  AsnSvrToOtherQryResp reply;
  decodeOurs(reply);
  const Peer peer(frameBytes());
  AsnBuf ours;
  std::vector<unsigned char> theirs(frameBytes().size());
  std::size_t size = 0;
  comparePaired(state, repeated([&] {
                  ours.clear();
                  reply.BEnc(ours, NIClass_EncodingFormat_BER);
                }),
                repeated([&] { size = peer.encode(theirs); }));
  if (ours.size() != frameBytes().size() || size != frameBytes().size()) {
    state.SkipWithError("a frame was not written whole");
  }
}

#define EMF_AGAINST(body, Peer) \
  BENCHMARK_TEMPLATE(body, Peer)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(31)

#ifdef EMF_BENCH_ASN1C
EMF_AGAINST(decodeAgainst, Asn1cReply);
EMF_AGAINST(encodeAgainst, Asn1cReply);
#endif
EMF_AGAINST(decodeAgainst, OpensslReply);
EMF_AGAINST(encodeAgainst, OpensslReply);

}  // namespace
