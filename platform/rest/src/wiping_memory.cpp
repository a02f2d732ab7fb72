#include "wiping_memory.h"

#include <curl/curl.h>
#include <malloc.h>
#include <string.h>

#include <algorithm>
#include <cstdlib>

namespace orma::rest {
namespace {

void freeWiped(void* memory) {
  if (memory == nullptr) return;
  ::explicit_bzero(memory, ::malloc_usable_size(memory));
  std::free(memory);
}

// The library's own realloc would leave the text behind where it was.
void* reallocWiped(void* memory, std::size_t size) {
  if (memory == nullptr) return std::malloc(size);
  const std::size_t usable = ::malloc_usable_size(memory);
  if (size != 0 && size <= usable && size > usable / 2) return memory;
  void* const fresh = std::malloc(size);
  if (fresh == nullptr) return nullptr;
  ::memcpy(fresh, memory, std::min(size, usable));
  freeWiped(memory);
  return fresh;
}

}  // namespace

void startCurl() {
  ::curl_global_init_mem(CURL_GLOBAL_DEFAULT, std::malloc, freeWiped, reallocWiped, ::strdup,
                         std::calloc);
}

}  // namespace orma::rest
