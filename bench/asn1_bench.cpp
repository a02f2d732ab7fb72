// What the walk of a descriptor costs: a frame of 1,000 alarms of 26 fields, about 200 bytes each,
// is decoded, encoded and copied. The rate is that of its bytes.
#include <benchmark/benchmark.h>

#include <memory>
#include <string>

#include "codec.h"
#include "described.h"

namespace {

using namespace described;
using refl::Enum::OptionalPointer;
using refl::Enum::RequiredPointer;

struct DateTime : Sequence<DateTime> {
  static constexpr const char* kName = "DateTime";
  static void addAttributes(CClassInfor& infor) {
    addInt(infor, {"year", offsetof(DateTime, year)});
    addInt(infor, {"month", offsetof(DateTime, month)});
    addInt(infor, {"day", offsetof(DateTime, day)});
    addInt(infor, {"hour", offsetof(DateTime, hour)});
    addInt(infor, {"minute", offsetof(DateTime, minute)});
    addInt(infor, {"second", offsetof(DateTime, second)});
  }
  AsnInt year, month, day, hour, minute, second;
};

struct Alarm : Sequence<Alarm> {
  static constexpr const char* kName = "Alarm";
  static constexpr int kNumbers = 9;
  static constexpr int kTexts = 7;

  static void addAttributes(CClassInfor& infor) {
    for (int i = 0; i < kNumbers; ++i) {
      addInt(infor, {"number", offsetof(Alarm, numbers) + std::size_t(i) * sizeof(AsnInt)});
    }
    addOcts(infor, {"name", offsetof(Alarm, texts)});
    addInt(infor, {"reason", offsetof(Alarm, reason)});
    for (int i = 1; i < 4; ++i) {
      addOcts(infor, {"text", offsetof(Alarm, texts) + std::size_t(i) * sizeof(AsnOcts)});
    }
    addInt(infor, {"flag", offsetof(Alarm, flag), 0, OptionalPointer});
    addSequence<DateTime>(infor, {"fault", offsetof(Alarm, fault), -1, RequiredPointer});
    addSequence<DateTime>(infor, {"ack", offsetof(Alarm, ack), 1, OptionalPointer});
    addSequence<DateTime>(infor, {"clear", offsetof(Alarm, clear), 2, OptionalPointer});
    addInt(infor, {"zone", offsetof(Alarm, zone)});
    addOcts(infor, {"user", offsetof(Alarm, user), 3, OptionalPointer});
    addOcts(infor, {"location", offsetof(Alarm, texts) + 4 * sizeof(AsnOcts)});
    addOcts(infor, {"fdn", offsetof(Alarm, fdn), 5, OptionalPointer});
    addOcts(infor, {"para", offsetof(Alarm, texts) + 5 * sizeof(AsnOcts)});
    addOcts(infor, {"detail", offsetof(Alarm, texts) + 6 * sizeof(AsnOcts)});
    addList<ElementList<AsnOcts>>(infor, {"more", offsetof(Alarm, more), 4, OptionalPointer});
    addInt(infor, {"root", offsetof(Alarm, root)});
  }

  Alarm() : fault(new DateTime) {}
  Alarm(const Alarm&) = delete;
  Alarm& operator=(const Alarm&) = delete;
  ~Alarm() override {
    delete more;
    delete fdn;
    delete user;
    delete clear;
    delete ack;
    delete fault;
    delete flag;
  }

  AsnInt numbers[kNumbers];
  AsnOcts texts[kTexts];
  AsnInt reason;
  AsnInt* flag = nullptr;
  DateTime* fault;
  DateTime* ack = nullptr;
  DateTime* clear = nullptr;
  AsnInt zone;
  AsnOcts* user = nullptr;
  AsnOcts* fdn = nullptr;
  ElementList<AsnOcts>* more = nullptr;
  AsnInt root;
};

using Frame = ElementList<Alarm>;

void fill(Alarm& alarm, int number) {
  for (int i = 0; i < Alarm::kNumbers; ++i) alarm.numbers[i] = number * (i % 3 == 0 ? 65537 : 1);
  for (int i = 0; i < Alarm::kTexts; ++i) {
    alarm.texts[i].ReSet(i % 2 == 0 ? "Loss of signal" : "port 3");
  }
  alarm.reason = number % 300;
  alarm.flag = new AsnInt(1);
  alarm.fault->year = 2026;
  alarm.fault->month = 11;
  alarm.zone = 60;
  alarm.fdn = new AsnOcts(("NE=" + std::to_string(number) + ",FR=1,S=3,PP=0-1-7").c_str());
  alarm.root = -1;
}

std::unique_ptr<Frame> frameOfAlarms() {
  auto frame = std::make_unique<Frame>();
  for (int i = 0; i < 1000; ++i) fill(frame->add(), i);
  return frame;
}

void countBytes(benchmark::State& state, std::size_t bytes) {
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes));
  state.counters["frame_bytes"] = static_cast<double>(bytes);
}

void decodeFrame(benchmark::State& state) {
  const Bytes bytes = encoded(*frameOfAlarms());
  for (auto _ : state) {
    Frame frame;
    AsnBuf buffer(bytes.data(), bytes.size());
    unsigned long count = 0;
    frame.BDec(buffer, count, NIClass_EncodingFormat_BER);
    if (count != bytes.size()) state.SkipWithError("the frame was not read whole");
  }
  countBytes(state, bytes.size());
}
BENCHMARK(decodeFrame)->Unit(benchmark::kMicrosecond);

void encodeFrame(benchmark::State& state) {
  const auto frame = frameOfAlarms();
  AsnBuf buffer;
  for (auto _ : state) {
    buffer.clear();
    benchmark::DoNotOptimize(frame->BEnc(buffer, NIClass_EncodingFormat_BER));
  }
  countBytes(state, buffer.size());
}
BENCHMARK(encodeFrame)->Unit(benchmark::kMicrosecond);

// One item is reassigned from each alarm.
void copyAlarms(benchmark::State& state) {
  const auto frame = frameOfAlarms();
  Alarm item;
  for (auto _ : state) {
    for (std::size_t i = 0; i < frame->size(); ++i) item.Assign((*frame)[i]);
  }
  countBytes(state, encoded(*frame).size());
}
BENCHMARK(copyAlarms)->Unit(benchmark::kMicrosecond);

}  // namespace
