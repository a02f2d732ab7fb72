#include "graphml.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <filesystem>
#include <map>
#include <pugixml.hpp>
#include <set>
#include <string_view>

#include "error.h"
#include "files.h"
#include "utf8.h"

namespace ormasim {
namespace {

constexpr std::size_t kFileLimitBytes = 256u << 20;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
// Positions are 32-bit numbers for those who read them.
constexpr double kPositionLimit = 2147483647.0;

std::string_view trimmed(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r\n";
  const std::size_t from = text.find_first_not_of(kBlanks);
  if (from == std::string_view::npos) return {};
  return text.substr(from, text.find_last_not_of(kBlanks) - from + 1);
}

// All the text of an element: it may come in pieces around comments.
std::string textOf(const pugi::xml_node& element) {
  std::string text;
  for (const pugi::xml_node& child : element.children()) {
    if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata)
      text += child.value();
  }
  return text;
}

std::string utf8FromLatin1(std::string_view text) {
  std::string converted;
  for (const char character : text) {
    const auto byte = static_cast<unsigned char>(character);
    if (byte < 0x80) {
      converted += character;
    } else {
      converted += static_cast<char>(0xC0 | byte >> 6);
      converted += static_cast<char>(0x80 | (byte & 0x3F));
    }
  }
  return converted;
}

class Reader {
 public:
  explicit Reader(const std::string& file) : file_(file), source_(readFile(file, kFileLimitBytes)) {
    if (source_.compare(0, kByteOrderMark.size(), kByteOrderMark) == 0) {
      source_.erase(0, kByteOrderMark.size());
    }
  }

  Network read() {
    parse();
    network_.stem = std::filesystem::path(file_).stem().string();
    if (findInvalidUtf8(network_.stem) != std::string_view::npos) {
      throw SimError(file_ + ": the file's name is not valid UTF-8; rename it");
    }
    const pugi::xml_node root = document_.document_element();
    if (std::string_view(root.name()) != "graphml") {
      fail(root, "the root element is <" + std::string(root.name()) + ">, not <graphml>");
    }
    if (!root.child("graph")) fail(root, "there is no <graph>");
    readKeys(root);
    for (const pugi::xml_node& graph : root.children("graph")) readNodes(graph);
    // Edges may stand before the nodes that they name.
    for (const pugi::xml_node& graph : root.children("graph")) readEdges(graph);
    return std::move(network_);
  }

 private:
  // What a key of nodes stands for.
  struct Key {
    std::string name;
    std::string fallback;
  };
  using Attributes = std::map<std::string, std::string>;

  void parse() {
    pugi::xml_parse_result result = document_.load_buffer(source_.data(), source_.size());
    if (result.encoding == pugi::encoding_latin1) {
      // Converted here, so that offsets keep speaking of the bytes that this reader holds.
      source_ = utf8FromLatin1(source_);
      result = document_.load_buffer(source_.data(), source_.size(), pugi::parse_default,
                                     pugi::encoding_utf8);
    }
    if (result.encoding != pugi::encoding_utf8) {
      failAt(0, "the file is neither in UTF-8 nor in ISO-8859-1; convert it first");
    }
    if (!result) failAt(result.offset, result.description());
    const std::size_t invalid = findInvalidUtf8(source_);
    if (invalid != std::string_view::npos) {
      failAt(static_cast<std::ptrdiff_t>(invalid), "a byte is not valid UTF-8");
    }
  }

  void readKeys(const pugi::xml_node& root) {
    std::set<std::string> seen;
    for (const pugi::xml_node& key : root.children("key")) {
      const std::string id = required(key, "id");
      if (!seen.insert(id).second) fail(key, "a second <key> has the id \"" + id + "\"");
      const std::string_view domain = key.attribute("for").as_string("all");
      if (domain != "node" && domain != "all") continue;
      keys_[id] = {key.attribute("attr.name").value(), textOf(key.child("default"))};
    }
  }

  void readNodes(const pugi::xml_node& graph) {
    for (const pugi::xml_node& element : graph.children()) {
      const std::string_view name = element.name();
      if (name == "hyperedge") fail(element, "hyperedges have no counterpart in an inventory");
      if (name != "node") continue;
      if (element.child("graph")) fail(element, "a graph within a node is not supported");
      const std::string id = required(element, "id");
      if (!indexes_.emplace(id, network_.nodes.size()).second) {
        fail(element, "a second node has the id \"" + id + "\"");
      }
      network_.nodes.push_back(nodeFrom(element, id));
    }
  }

  void readEdges(const pugi::xml_node& graph) {
    for (const pugi::xml_node& edge : graph.children("edge")) {
      network_.edges.push_back({endOf(edge, "source"), endOf(edge, "target")});
    }
  }

  GraphNode nodeFrom(const pugi::xml_node& element, const std::string& id) const {
    Attributes attributes = attributesOf(element);
    GraphNode node;
    node.id = id;
    node.label = attributes["label"];
    node.country = attributes["Country"];
    if (!attributes["Longitude"].empty()) {
      node.posX = position(element, (number(element, "Longitude", attributes) + 180) * 10);
    }
    if (!attributes["Latitude"].empty()) {
      node.posY = position(element, (90 - number(element, "Latitude", attributes)) * 10);
    }
    return node;
  }

  // Ids of keys are each file's own: what counts is the name that the file gives them.
  Attributes attributesOf(const pugi::xml_node& element) const {
    Attributes attributes;
    for (const auto& [id, key] : keys_) {
      if (!key.fallback.empty()) attributes[key.name] = key.fallback;
    }
    for (const pugi::xml_node& data : element.children("data")) {
      const std::string id = required(data, "key");
      const auto key = keys_.find(id);
      if (key == keys_.end()) fail(data, "no <key> for nodes has the id \"" + id + "\"");
      std::string text = textOf(data);
      // White space that stands alone is layout, not a value.
      if (trimmed(text).empty()) text.clear();
      attributes[key->second.name] = std::move(text);
    }
    return attributes;
  }

  std::size_t endOf(const pugi::xml_node& edge, const char* which) const {
    const std::string id = required(edge, which);
    const auto node = indexes_.find(id);
    if (node == indexes_.end()) {
      fail(edge, std::string("the ") + which + " \"" + id + "\" of an edge is no node of the file");
    }
    return node->second;
  }

  double number(const pugi::xml_node& element, const char* name,
                const Attributes& attributes) const {
    const std::string& text = attributes.at(name);
    std::string_view digits = trimmed(text);
    if (!digits.empty() && digits.front() == '+') digits.remove_prefix(1);
    double value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (error != std::errc() || end != digits.data() + digits.size() || !std::isfinite(value)) {
      fail(element, std::string(name) + " \"" + text + "\" is not a number");
    }
    return value;
  }

  std::int64_t position(const pugi::xml_node& element, double value) const {
    if (std::abs(value) > kPositionLimit)
      fail(element, "its place is beyond what a position can hold");
    return std::llround(value);
  }

  std::string required(const pugi::xml_node& element, const char* attribute) const {
    const std::string value = element.attribute(attribute).value();
    if (value.empty()) {
      fail(element, "<" + std::string(element.name()) + "> has no \"" + attribute + "\"");
    }
    return value;
  }

  [[noreturn]] void fail(const pugi::xml_node& element, const std::string& reason) const {
    failAt(element.offset_debug(), reason);
  }

  [[noreturn]] void failAt(std::ptrdiff_t offset, const std::string& reason) const {
    const auto end =
        std::clamp<std::ptrdiff_t>(offset, 0, static_cast<std::ptrdiff_t>(source_.size()));
    const auto line = 1 + std::count(source_.begin(), source_.begin() + end, '\n');
    throw SimError(file_ + ":" + std::to_string(line) + ": " + reason);
  }

  std::string file_;
  std::string source_;
  pugi::xml_document document_;
  std::map<std::string, Key> keys_;
  std::map<std::string, std::size_t> indexes_;
  Network network_;
};

}  // namespace

Network readGraphml(const std::string& file) { return Reader(file).read(); }

}  // namespace ormasim
