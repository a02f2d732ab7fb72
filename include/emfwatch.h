// How a host hears of the plug-in's work, for its health and its figures: it defines these
// functions itself, and the plug-in calls what it finds. Where a host defines none, nothing is
// measured.
//
//   extern "C" EMF_API void emfOperationEnded(const char* operation, std::int64_t nanoseconds,
//                                             int failed) noexcept {
//     figures.count(operation, std::chrono::nanoseconds(nanoseconds), failed != 0);
//   }
//
// Thread-safety: both are called on any thread, by several at a time, and have to be thread-safe.
// They must not throw and must not call the plug-in.
#pragma once

#include <cstddef>
#include <cstdint>

#include "emfexport.h"

// The operation that rebuilds the subnet names in the background.
constexpr char kEmfSubnetRefresh[] = "SubmapBufMgr::QuerySubnetAndNodesInfo";

extern "C" {

// An operation has come to its end, which includes an exception: "EMFTopoI::getDevice", how long it
// took, and 1 when it failed, otherwise 0. Failed has what threw or reported failure, and what
// could not be read though the interface has it report success. An operation that calls another one
// is told after it. The text lives as long as the process.
EMF_API void emfOperationEnded(const char* operation, std::int64_t nanoseconds, int failed) noexcept
    __attribute__((weak));

// A cache was filled anew and has this many entries now. Caches: "devices" (DeviceInfo), "subnets"
// and "subnet_names" (what EMFTopoI::getSubmapName reads). The text lives as long as the process.
EMF_API void emfCacheFilled(const char* cache, std::size_t entries) noexcept __attribute__((weak));
}
