// The version of the plug-in's binary interface: of everything that these headers declare. Code
// that was built for one version works with each plug-in of that version, and with no other. A
// program that loads the plug-in compares before it calls anything:
//
//   auto* version = static_cast<const int*>(dlsym(library, kEmfInterfaceVersionSymbol));
//   if (version == nullptr || *version != kEmfInterfaceVersion) refuse();
//
// Thread-safety: immutable.
#pragma once

#include "emfexport.h"

// What this code is built for. It is raised when something that older code relies on goes or
// changes, not when something is added.
constexpr int kEmfInterfaceVersion = 1;
constexpr char kEmfInterfaceVersionSymbol[] = "ii_ormaiac_emf_interface_version";

// What the plug-in was built with.
extern "C" EMF_API const int ii_ormaiac_emf_interface_version;
