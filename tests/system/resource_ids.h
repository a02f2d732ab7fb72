// The ids of resources, as docs/ident.md says, stated once more.
//
// Thread-safety: immutable. FDNs are taken to be well-formed.
#pragma once

#include <cstdint>
#include <string>

namespace systemtest {

inline std::int64_t idOf(const std::string& fdn) {
  if (fdn.find(',') == std::string::npos) return std::stoll(fdn.substr(fdn.find('=') + 1));
  std::uint64_t hash = 0xCBF29CE484222325;
  for (const char byte : fdn) hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100000001B3;
  const std::uint64_t lower = (hash ^ (hash >> 60)) & ((std::uint64_t{1} << 60) - 1);
  return static_cast<std::int64_t>(lower | (std::uint64_t{1} << 62));
}

// The compatible id of a resource id.
inline std::int64_t iidOf(std::int64_t id) { return id ^ (std::int64_t{1} << 60); }

// The ids of an FDN from the element down, joined by "/".
inline std::string pathOf(const std::string& fdn) {
  std::string path;
  for (std::size_t comma = fdn.find(',');; comma = fdn.find(',', comma + 1)) {
    path += (path.empty() ? "" : "/") + std::to_string(idOf(fdn.substr(0, comma)));
    if (comma == std::string::npos) return path;
  }
}

}  // namespace systemtest
