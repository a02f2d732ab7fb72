// The program of Graphviz that draws the pictures.
//
//   std::string svg = drawSvg(dotText(picture));
//
// Thread-safety: thread-safe. Blocks until the program has ended. Throws HostFailure when it is not
// installed or fails.
#pragma once

#include <string>

namespace ormaagent {

std::string drawSvg(const std::string& dot);

// Ends a drawing that is under way, for a process that is about to end itself. Thread-safe.
void endDrawing() noexcept;

}  // namespace ormaagent
