// A name too long for a string's own room, as it is sent and as it is given out.
#pragma once

#include <string>

namespace emf::torture {

inline const std::string kLongName = "a name that takes memory of its own";
inline const std::string kConverted = "UTF-8>GBK:" + kLongName;

}  // namespace emf::torture
