// GraphML for tests, in the shape of the files that are to be imported.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace ormasim::testing {

using NodeData = std::vector<std::pair<std::string, std::string>>;

// One line each, so that line numbers are plain to see: the nth element of a graph stands in
// line 6 + n.
inline std::string node(const std::string& id, const NodeData& data) {
  std::string text = "    <node id=\"" + id + "\">";
  for (const auto& [name, value] : data) text += "<data key=\"k" + name + "\">" + value + "</data>";
  return text + "</node>\n";
}

inline std::string edge(const std::string& source, const std::string& target) {
  return "    <edge source=\"" + source + "\" target=\"" + target + "\"/>\n";
}

inline std::string graphml(const std::string& elements) {
  std::string text = "<graphml>\n";
  for (const char* name : {"label", "Country", "Longitude", "Latitude"}) {
    text += "  <key id=\"k" + std::string(name) + "\" for=\"node\" attr.name=\"" + name + "\"/>\n";
  }
  return text + "  <graph edgedefault=\"undirected\">\n" + elements + "  </graph>\n</graphml>\n";
}

}  // namespace ormasim::testing
