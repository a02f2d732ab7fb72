// Opens files for reading that somebody else may have put anything in the place of.
//
//   const emf::InputFile file = emf::openInput(path);
//   if (!file) report(path);
//
// Thread-safety: thread-safe. Failure is told by the result.
#pragma once

#include <cstdio>
#include <memory>

namespace emf {

using InputFile = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

enum class Directories { Refused, Opened };

// Null unless the path leads to a regular file, or perhaps a directory, that can be read: anything
// else could block, as a pipe does, or go on without end.
InputFile openInput(const char* path, Directories directories = Directories::Refused);

}  // namespace emf
