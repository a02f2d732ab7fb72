// The calls of ACE_DLL in this program, recorded and led to another file. For programs that are
// linked with --wrap for each of them.
//
//   openInstead("/tmp/product.so");
//   EXPECT_THAT(dllCalls(), ElementsAre("construct true", …));
//
// Thread-safety: thread-compatible.
#pragma once

#include <string>
#include <vector>

namespace emf::test {

// What the next libraries to be opened are in truth. Forgets the calls.
void openInstead(const std::string& path);
const std::vector<std::string>& dllCalls();

}  // namespace emf::test
