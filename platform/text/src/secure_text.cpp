#include "orma/text/secure_text.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

int memset_s(void* dest, std::size_t destMax, int byte, std::size_t count) {
  if (dest == nullptr) return EINVAL;
  std::memset(dest, byte, std::min(count, destMax));
  return count > destMax ? ERANGE : 0;
}

int strncpy_s(char* dest, std::size_t destMax, const char* src, std::size_t count) {
  if (dest == nullptr || destMax == 0) return EINVAL;
  dest[0] = '\0';
  if (src == nullptr) return EINVAL;
  // Looking no further than destMax keeps an unterminated source from being read past the bound.
  const std::size_t length = strnlen(src, std::min(count, destMax));
  if (length >= destMax) return ERANGE;
  std::memcpy(dest, src, length);
  dest[length] = '\0';
  return 0;
}

int snprintf_s(char* dest, std::size_t destMax, std::size_t count, const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  const int written = vsnprintf_s(dest, destMax, count, format, arguments);
  va_end(arguments);
  return written;
}

int vsnprintf_s(char* dest, std::size_t destMax, std::size_t count, const char* format,
                va_list arguments) {
  if (dest == nullptr || destMax == 0) return -1;
  // Only the first byte: destMax may be two gigabytes of untouched memory.
  dest[0] = '\0';
  if (format == nullptr || count >= destMax) return -1;
  const int wanted = std::vsnprintf(dest, count + 1, format, arguments);
  if (wanted < 0) {
    dest[0] = '\0';
    return -1;
  }
  return static_cast<std::size_t>(wanted) > count ? -1 : wanted;
}
