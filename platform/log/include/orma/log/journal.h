// Standard error as a way into systemd's journal: a line may begin with "<3>", its priority.
//
//   std::cerr << (orma::standardErrorIsJournal() ? "<3>" : "") << "out of order\n";
//
// Thread-safety: thread-safe. Nothing is thrown.
#pragma once

#include "orma/bundle/export.h"

namespace orma {

// Whether standard error is the stream that systemd has told of in JOURNAL_STREAM. A program that
// redirects its standard error no longer writes to the journal, though it inherits the variable.
ORMA_API bool standardErrorIsJournal() noexcept;

}  // namespace orma
