// Names that a command is given: words of its command line, and files with one name a line.
//
//   const auto names = readNames({"NE=2"}, {"ports.txt", "-"});  // "-" is standard input
//
// Thread-safety: thread-safe, but for standard input. Blocks while it reads. A file that cannot be
// read, or is no list of names, throws HostFailure.
#pragma once

#include <string>
#include <vector>

namespace ormaagent {

// The words, then the lines of each file. An empty line is no name; a line's end may be CR LF. At
// most a million names of 65,536 bytes.
std::vector<std::string> readNames(std::vector<std::string> words,
                                   const std::vector<std::string>& files);

}  // namespace ormaagent
