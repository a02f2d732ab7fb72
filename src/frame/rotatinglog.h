// The two log files behind WriteLog and WriteException: their state, their rotation and the report
// of what should not be.
//
// Thread-safety: thread-safe. Nothing fails visibly, but that a rotation without a new file ends
// the process.
//
//   emf::reportAssertion(__LINE__, "nBuf >= 0");
#pragma once

namespace emf {

// Tells the log object of this library's failures, or where there is none the proxy, that an
// expression in the named line does not hold. The program goes on.
void reportAssertion(int line, const char* expression);

// Flushes the files that are open.
void flushLogs();

}  // namespace emf
