// How this library's failures are thrown: by code, with the text of the code.
//
// Thread-safety: thread-safe.
//
//   if (buffer.remaining() < length) failAsn(kAsnEndOfInput, __LINE__);
#pragma once

#include "orma/asn1/csm_exception.h"

// Throws a new CSM_Exception by pointer, or std::bad_alloc.
[[noreturn]] void failAsn(AsnErrorCode code, long line);
