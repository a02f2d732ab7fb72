// Throwing ProcessException the way every caller does: code, line, source file, the function
// "unknown", and a detail text that repeats the code.
#pragma once

#include <string>

namespace emf {

// Throws ProcessException with detail "ErrCode:<code>,Detail:<detail>".
[[noreturn]] void throwProcessException(int code, const char* sourceName, int line,
                                        const std::string& detail);

}  // namespace emf
