#pragma once

// Marks the interface of libii_ormaiac_emf.so; every other symbol stays hidden.
#define EMF_API __attribute__((visibility("default")))
