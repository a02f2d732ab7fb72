// What a printf-like call would write, of any length.
#pragma once

#include <cstdarg>
#include <cstdio>
#include <string>

namespace emf::doubles {

inline std::string printfText(const char* format, va_list arguments)
    __attribute__((format(printf, 1, 0)));

inline std::string printfText(const char* format, va_list arguments) {
  va_list measured;
  va_copy(measured, arguments);
  const int length = std::vsnprintf(nullptr, 0, format, measured);
  va_end(measured);
  std::string text(length > 0 ? static_cast<std::size_t>(length) : 0, '\0');
  if (!text.empty()) std::vsnprintf(text.data(), text.size() + 1, format, arguments);
  return text;
}

}  // namespace emf::doubles
