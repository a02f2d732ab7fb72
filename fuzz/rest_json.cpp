// An answer of any bytes: it is read, or refused with a reason and no value.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "json_reader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  orma::rest::JsonReader reader(20);
  std::string text(reinterpret_cast<const char*>(data), size);
  std::string reason;
  Json::Value value = "before";
  const bool isRefused = reader.read(text, value, reason) == orma::rest::JsonOutcome::Refused;
  if (isRefused && (reason.empty() || !value.isNull())) std::abort();
  return 0;
}
