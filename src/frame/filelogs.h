// Local diagnostics: the trace of database reads, text for standard output, and two rotating files
// in the agent's own directory, the agent log and the exception log. docs/filelogs.md tells where
// the files lie and what becomes of a text that is too long or cannot be written.
//
// Thread-safety: thread-safe. Texts of several threads come out whole, one after the other. Failure
// is not told to the caller, but for openExceptionLog. A rotation that cannot open its new file
// ends the process.
//
//   WriteBothLogs("%s: %d rows\n", table, rows);
#pragma once

// The database trace: a trace of level 1 that begins with "[ORMACORBA DBLog][SATrace]:".
void DbTrace(const char* format, ...) __attribute__((format(printf, 1, 2)));

// Text of at most 2047 bytes to standard output, while the console is enabled.
void ConsolePrint(const char* format, ...) __attribute__((format(printf, 1, 2)));

// Appends to the agent log, which the first text opens.
void WriteLog(const char* text);
// Appends to the exception log, if it is open: this operation does not open it.
void WriteException(const char* text);
// At most 299 bytes to both logs, behind the number of the calling thread.
void WriteBothLogs(const char* format, ...) __attribute__((format(printf, 1, 2)));

// Writes what the ASN.1 buffer holds, behind the number of the calling thread; the buffer keeps it.
void WriteAsnTrace();

namespace emf {

// Puts a text into the ASN.1 buffer and writes it, as WriteAsnTrace does, before another thread can
// put its own there. Of a text that is longer than the buffer the first 10190 bytes are shown.
void writeAsnText(const char* text);

// Opens "<prefix>/log/exception.txt" as the first exception log, for WriteException to go on from;
// rotated files lie beside it. Of the prefix 299 bytes count. False when it cannot be opened; true,
// and nothing done, when an exception log is open.
bool openExceptionLog(const char* prefix);

// Whether ConsolePrint prints; it does at the start.
void enableConsolePrint(bool enabled);
// Where the ASN.1 trace goes; at the start to the agent log alone.
void sendAsnTraceTo(bool standardOutput, bool agentLog);

}  // namespace emf
