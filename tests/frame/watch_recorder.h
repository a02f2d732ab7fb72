// A host that watches, for the tests: what the plug-in tells it, in the order of the telling.
//
//   watchTold().clear();
//   EMFTopoI::getAllNodes("", nodes);
//   EXPECT_THAT(watchTold(), ElementsAre("EMFTopoI::getAllNodes"));
//
// Thread-safety: thread-compatible.
#pragma once

#include <string>
#include <vector>

namespace emf::test {

// "EMFTopoI::getDevice", "EMFTopoI::getDevice failed", "devices 12".
std::vector<std::string>& watchTold();

}  // namespace emf::test
