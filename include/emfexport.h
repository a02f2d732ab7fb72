// The mark of the interface of libii_ormaiac_emf.so: classes and functions that carry it can be
// linked against, every other symbol of the library stays hidden.
#pragma once

#define EMF_API __attribute__((visibility("default")))
