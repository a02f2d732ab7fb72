// Reading a 450 kB page of device objects into a Json::Value: the REST client's reader against
// jsoncpp's own, and simdjson's bare parse, which builds no Json::Value, as the lower bound.
#include <benchmark/benchmark.h>
#include <json/reader.h>
#include <simdjson.h>

#include <memory>
#include <string>

#include "json_reader.h"
#include "paired.h"

namespace {

constexpr int kDevices = 4500;

std::string pageOfDevices() {
  std::string page = "{\"objList\":[";
  for (int i = 2; i < kDevices + 2; ++i) {
    const std::string id = std::to_string(i);
    page += i == 2 ? "{" : ",{";
    page += "\"nativeId\":\"NE=" + id + "\",\"typeId\":" + std::to_string(131072 + i % 7) +
            ",\"ipAddress\":\"10." + std::to_string(i / 65536) + "." +
            std::to_string(i / 256 % 256) + "." + std::to_string(i % 256) +
            "\",\"name\":\"北京-Zürich-core-" + id + "\"}";
  }
  return page + "],\"isTruncated\":true,\"marker\":\"" + std::to_string(kDevices + 1) + "\"}";
}

// The reader that Json::CharReaderBuilder gives with these settings.
class JsoncppReader {
 public:
  explicit JsoncppReader(bool comments) {
    Json::CharReaderBuilder builder;
    builder["collectComments"] = comments;
    reader_.reset(builder.newCharReader());
  }
  bool read(const std::string& text, Json::Value& value) {
    return reader_->parse(text.data(), text.data() + text.size(), &value, &problems_);
  }

 private:
  std::unique_ptr<Json::CharReader> reader_;
  std::string problems_;
};

void comparePage(benchmark::State& state, bool comments) {
  std::string page = pageOfDevices();
  JsoncppReader jsoncpp(comments);
  orma::rest::JsonReader reader(100);
  std::string reason;
  Json::Value ours;
  Json::Value theirs;
  comparePaired(
      state, [&] { reader.read(page, ours, reason); }, [&] { jsoncpp.read(page, theirs); });
  if (ours != theirs || ours["objList"].size() != kDevices) state.SkipWithError("results differ");
  state.counters["bytes"] = static_cast<double>(page.size());
}

void readPage(benchmark::State& state) { comparePage(state, true); }
BENCHMARK(readPage)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(201);

void readPageAgainstReaderWithoutComments(benchmark::State& state) { comparePage(state, false); }
BENCHMARK(readPageAgainstReaderWithoutComments)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(201);

void bareParse(benchmark::State& state) {
  const simdjson::padded_string page(pageOfDevices());
  simdjson::dom::parser parser;
  for (auto _ : state) {
    if (parser.parse(page).error() != simdjson::SUCCESS) state.SkipWithError("no JSON");
  }
}
BENCHMARK(bareParse)->Unit(benchmark::kMillisecond);

}  // namespace
