// A network of one element below two subnets, as the topology service tells of it.
//
// Thread-safety: thread-safe.
#pragma once

#include <string>

namespace emf::torture {

constexpr unsigned long kDevice = 12;
constexpr char kOldCity[] = "an old city whose name takes memory of its own";
constexpr char kNewCity[] = "a new city whose name takes memory of its own";

// Makes the platform's REST double answer with that network, subnets on two pages.
void network(const char* city);
// The link of the element in such a network, and the one that the buffers have.
std::string linkWith(const char* city);
std::string linkOfDevice();

}  // namespace emf::torture
