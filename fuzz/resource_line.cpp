// A resource file of any bytes: its reading ends, and its keys and values end inside their buffers.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "orma/text/text.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::FILE* const file = fmemopen(const_cast<std::uint8_t*>(data), size, "r");
  if (file == nullptr) return 0;
  // Of exactly the size that is asked for, so that the address sanitizer sees a byte too many.
  const std::unique_ptr<char[]> key(new char[kOrmaLineBufferBytes]);
  const std::unique_ptr<char[]> value(new char[kOrmaLineBufferBytes]);
  key[0] = value[0] = '\0';
  for (std::size_t lines = 0; OrmaGetLine(key.get(), value.get(), file) != 0; ++lines) {
    if (lines > size) std::abort();
    if (std::strlen(key.get()) >= kOrmaLineBufferBytes) std::abort();
    if (std::strlen(value.get()) >= kOrmaLineBufferBytes) std::abort();
    OrmaTrim(value.get());
  }
  std::fclose(file);
  return 0;
}
