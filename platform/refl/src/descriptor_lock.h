// The one lock under which all descriptors are filled. It is recursive, since describing a class
// describes the classes of its fields.
//
// Thread-safety: thread-safe.
#pragma once

#include <mutex>

namespace refl {

std::recursive_mutex& descriptorLock();

}  // namespace refl
