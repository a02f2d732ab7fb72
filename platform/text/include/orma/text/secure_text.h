// Bounded text functions. Each checks its bounds before it writes and always leaves `dest`
// terminated (when destMax is not 0).
//
// Thread-safety: thread-safe on distinct targets.
#pragma once

#include <cstdarg>
#include <cstddef>
#include <cstdio>

#include "orma/bundle/export.h"

extern "C" {

// Fills `count` bytes of `dest`. 0, or an errno value when dest is null or count > destMax (then
// destMax bytes are filled).
ORMA_API int memset_s(void* dest, std::size_t destMax, int byte, std::size_t count);

// Copies at most `count` characters of `src`. 0, or an errno value when a pointer is null or the
// copy with its NUL does not fit (then dest is emptied).
ORMA_API int strncpy_s(char* dest, std::size_t destMax, const char* src, std::size_t count);

// Formats at most `count` characters. The number of characters written, or -1 when the text was
// cut, the format failed or the bounds make no sense (count >= destMax, null pointers). A text
// cut at `count` stays in dest.
ORMA_API int snprintf_s(char* dest, std::size_t destMax, std::size_t count, const char* format, ...)
    __attribute__((format(printf, 4, 5)));
ORMA_API int vsnprintf_s(char* dest, std::size_t destMax, std::size_t count, const char* format,
                         va_list arguments) __attribute__((format(printf, 4, 0)));
}
