// A reply frame of 1,000 alarms of about 200 bytes: decoded and encoded by the plug-in's messages,
// against asn1c's generated code and OpenSSL's template decoder on the same bytes. Decoding makes
// and frees the values; encoding writes into a buffer that is there. A ratio is our time by theirs.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "alarm_peers.h"
#include "message_walk.h"
#include "paired.h"

namespace {

constexpr int kItems = 1000;
constexpr int kRepeats = 10;  // of one measured body, to stand above the clock

void fillItem(AsnSvrToOtherQryRespResultStrc& item, int number) {
  item.ulSerialNo = 1000000 + number;
  item.ulDevSerialNo = 2000 + number;
  item.ulNodeType = 131077;
  item.ulDevID = 2 + number % 5000;
  item.ucDevType = 5;
  item.ulFaultID = 1001 + number % 20;
  item.ucSeverity = 1 + number % 4;
  item.ucFunctionType = 3;
  item.ucEventType = 1;
  item.strName.ReSet("LOSS_OF_SIGNAL");
  item.ulReasonID = 2;
  item.strReason.ReSet("The fibre is broken");
  item.strRepair.ReSet("Check the fibre");
  item.strMeaning.ReSet("No optical power");
  item.ucFaultFlag.make() = 1;
  item.faultTime->sYear = 2026;
  item.faultTime->cMonth = 11;
  item.faultTime->cDay = 21;
  item.faultTime->cHour = number % 24;
  item.faultTime->cMinute = number % 60;
  item.faultTime->cSecond = 7;
  item.neZone = 60;
  item.strLocation.ReSet("rack 4, shelf 2");
  item.strFdn.make().ReSet(("NE=" + std::to_string(2 + number % 5000) + ",FR=1,S=3,PP=7").c_str());
  item.strPara.ReSet("port=7");
  item.strDetail.ReSet("");
}

const std::string& frameBytes() {
  static const std::string bytes = [] {
    AsnSvrToOtherQryResp reply;
    reply.ulFrameTotal = reply.ulFrameNo = 1;
    for (int i = 0; i < kItems; ++i) fillItem(reply.lstItem.add(), i);
    return emf::test::encoded(reply);
  }();
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
