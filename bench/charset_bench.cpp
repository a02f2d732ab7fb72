// What converting one label of 30 characters costs, as it is done for each name in a REST answer.
#include <benchmark/benchmark.h>

#include <string>

#include "orma/text/text.h"

namespace {

std::string repeated(const std::string& text, int times) {
  std::string result;
  for (int i = 0; i < times; ++i) result += text;
  return result;
}

const std::string& asciiLabel() {
  static const std::string label = repeated("core-", 6);
  return label;
}

const std::string& latin1Label() {
  static const std::string label = repeated("M\xC3\xBCnch", 6);  // one character in five
  return label;
}

const std::string& chineseLabel() {
  static const std::string label = repeated("\xE6\xA1\x86\xE6\xA7\xBD\xE7\xAB\xAF", 10);
  return label;
}

void convert(benchmark::State& state, const std::string& label, const std::string& set) {
  const std::string utf8 = "UTF-8";
  std::string output;
  for (auto _ : state) {
    OrmaGlobalUtils::OrmaCodeSetConvert(utf8, set, label, output);
    benchmark::DoNotOptimize(output);
  }
}

BENCHMARK_CAPTURE(convert, ascii_to_gbk, asciiLabel(), "GBK");
BENCHMARK_CAPTURE(convert, latin1_to_gbk, latin1Label(), "GBK");
BENCHMARK_CAPTURE(convert, chinese_to_gbk, chineseLabel(), "GBK");
BENCHMARK_CAPTURE(convert, ascii_to_iso_8859_1, asciiLabel(), "ISO-8859-1");
BENCHMARK_CAPTURE(convert, latin1_to_iso_8859_1, latin1Label(), "ISO-8859-1");
BENCHMARK_CAPTURE(convert, chinese_to_iso_8859_1, chineseLabel(), "ISO-8859-1");

void characterSetSwitch(benchmark::State& state) {
  for (auto _ : state) {
    benchmark::DoNotOptimize(NS_ORMACORBA::CorbaAgentConfig::Instance()->GetCharacterSetSwitch());
  }
}
BENCHMARK(characterSetSwitch);

void formatName(benchmark::State& state) {
  char text[64];
  unsigned int id = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(snprintf_s(text, sizeof text, sizeof text - 1, "NE=%u", ++id));
  }
}
BENCHMARK(formatName);

}  // namespace
