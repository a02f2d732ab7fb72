#include "network_picture.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <map>
#include <set>
#include <string_view>

#include "display_text.h"

namespace ormaagent {

namespace {

struct StatusColour {
  std::int32_t status;
  const char* colour;
  const char* meaning;  // for the legend
};

// By the two states of the worse end of a link.
constexpr StatusColour kStatusColours[] = {
    {1, "#2E9E41", "both states 1"},   {9, "#E08A00", "first state only"},
    {8, "#D02020", "both states 0"},   {2, "#8E3FB0", "other states"},
    {0, "#8A8A8A", "status not told"}, {-1, "#4A6FA5", "no port or a negative state"},
};
constexpr char kUnknownColour[] = "#000000";

// Fills the nodes of a box, so that boxes that overlap can be told apart; in turn.
constexpr const char* kBoxFills[] = {"#DCE9F9", "#E3F4DC", "#FBEBD3", "#F6DDE4",
                                     "#E6DFF5", "#D6F1EF", "#F7F3C9", "#E8E4DE"};
constexpr char kPlainFill[] = "#FFFFFF";  // in no box

constexpr double kNodeHeight = 20;
constexpr double kColumnWidth = 5.6;      // of a label, in points
constexpr std::size_t kMostColumns = 20;  // a longer label is cut; it is whole in the tooltip
constexpr double kBoxMargin = 16;
constexpr double kBoxHead = 14;  // for the label of a box
constexpr double kPointsPerInch = 72;

// As the text of a quoted attribute. Graphviz reads escapes and HTML entities in it.
std::string quoted(std::string_view text) {
  std::string out = "\"";
  for (const char byte : text) {
    if (byte == '&') {
      out += "&amp;";
      continue;
    }
    if (byte == '"' || byte == '\\') out += '\\';
    out += byte;
  }
  return out += '"';
}

std::string shownText(std::string_view text) {
  return displayText(text, CharacterSet::kUtf8).bytes;
}

bool continuesCharacter(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; }

void dropLastCharacter(std::string& text) {
  while (continuesCharacter(text.back())) text.pop_back();
  text.pop_back();
}

DisplayText shortLabel(std::string_view label) {
  DisplayText shown = displayText(label, CharacterSet::kUtf8);
  if (shown.width <= kMostColumns) return shown;
  std::string text = shown.bytes.substr(0, 4 * kMostColumns);  // no character has more bytes
  while (displayText(text, CharacterSet::kUtf8).width >= kMostColumns) dropLastCharacter(text);
  return displayText(text + "…", CharacterSet::kUtf8);
}

double nodeWidth(const DisplayText& label) {
  return 10 + kColumnWidth * static_cast<double>(std::max<std::size_t>(label.width, 2));
}

// Two digits behind a point, whatever the locale.
std::string number(double value) {
  const long long hundredths = std::llround(value * 100);
  const long long rest = std::llabs(hundredths % 100);
  return (hundredths < 0 ? "-" : "") + std::to_string(std::llabs(hundredths) / 100) + "." +
         (rest < 10 ? "0" : "") + std::to_string(rest);
}

std::string nodeName(const std::string& deviceId) { return quoted("d" + deviceId); }

// The rectangle around the nodes of a box.
struct Frame {
  double left = 0, bottom = 0, right = 0, top = 0;
  bool used = false;

  void include(const Spot& spot, double width) {
    const Frame node{spot.x - width / 2 - kBoxMargin, spot.y - kNodeHeight / 2 - kBoxMargin / 2,
                     spot.x + width / 2 + kBoxMargin,
                     spot.y + kNodeHeight / 2 + kBoxMargin / 2 + kBoxHead, true};
    if (!used) {
      *this = node;
      return;
    }
    left = std::min(left, node.left);
    bottom = std::min(bottom, node.bottom);
    right = std::max(right, node.right);
    top = std::max(top, node.top);
  }
};

class DotWriter {
 public:
  explicit DotWriter(const NetworkPicture& picture) : picture_(picture) {
    std::vector<MapPosition> positions;
    for (const PictureNode& node : picture.nodes) positions.push_back(node.position);
    spots_ = layOut(positions);
    for (std::size_t i = 0; i < picture.nodes.size(); ++i) {
      byBox_[picture.nodes[i].subMapId].push_back(i);
    }
  }

  std::string write() {
    writeHead();
    for (const PictureBox& box : picture_.boxes) writeBox(box);
    for (const auto& entry : byBox_) writeNodes(entry.second, kPlainFill);
    writeLinks();
    return out_ + "}\n";
  }

 private:
  void writeHead() {
    out_ =
        "graph network {\n"
        "  graph [splines=line, outputorder=edgesfirst, fontname=\"sans-serif\", fontsize=12,\n"
        "         labelloc=t, label=<";
    for (const StatusColour& row : kStatusColours) {
      out_ += "<font color=\"" + std::string(row.colour) + "\">&#9632; " +
              std::to_string(row.status) + ": " + row.meaning + "</font>   ";
    }
    out_ +=
        ">];\n"
        "  node [shape=box, style=\"rounded,filled\", color=\"#3B5B8C\",\n"
        "        fixedsize=true, height=" +
        number(kNodeHeight / kPointsPerInch) +
        ", margin=0, fontname=\"sans-serif\", fontsize=9];\n"
        "  edge [penwidth=1.5];\n";
  }

  void writeBox(const PictureBox& box) {
    const auto entry = byBox_.find(box.subMapId);
    if (entry == byBox_.end()) return;
    Frame frame;
    for (const std::size_t i : entry->second) {
      frame.include(spots_[i], nodeWidth(shortLabel(picture_.nodes[i].label)));
    }
    // Without these two, -n2 would leave the box out.
    out_ += "  subgraph " + quoted("cluster_" + shownText(box.subMapId)) + " {\n    graph [bb=\"" +
            number(frame.left) + "," + number(frame.bottom) + "," + number(frame.right) + "," +
            number(frame.top) + "\", lp=\"" + number((frame.left + frame.right) / 2) + "," +
            number(frame.top - kBoxHead / 2) +
            "\", style=rounded, color=\"#9AA5B1\", fontcolor=\"#5A6572\", fontsize=10, label=" +
            quoted(shownText(box.label)) + "];\n";
    writeNodes(entry->second, kBoxFills[boxes_++ % std::size(kBoxFills)]);
    out_ += "  }\n";
    byBox_.erase(entry);
  }

  void writeNodes(const std::vector<std::size_t>& which, const char* fill) {
    for (const std::size_t i : which) {
      const PictureNode& node = picture_.nodes[i];
      const DisplayText label = shortLabel(node.label);
      const std::string id = std::to_string(node.deviceId);
      known_.insert(id);
      out_ += "  " + nodeName(id) + " [pos=\"" + number(spots_[i].x) + "," + number(spots_[i].y) +
              "\", width=" + number(nodeWidth(label) / kPointsPerInch) + ", fillcolor=\"" + fill +
              "\", label=" + quoted(label.bytes) +
              ", tooltip=" + quoted(shownText(node.label) + " (" + id + ")") + "];\n";
    }
  }

  void writeLinks() {
    for (const PictureLink& link : picture_.links) {
      if (known_.count(link.source) == 0 || known_.count(link.destination) == 0) continue;
      out_ += "  " + nodeName(link.source) + " -- " + nodeName(link.destination) + " [color=\"" +
              linkColour(link.status) + "\", tooltip=" +
              quoted(shownText(link.label) + ": status " + std::to_string(link.status)) + "];\n";
    }
  }

  const NetworkPicture& picture_;
  std::vector<Spot> spots_;
  std::map<std::string, std::vector<std::size_t>> byBox_;  // nodes not written yet
  std::size_t boxes_ = 0;                                  // written
  std::set<std::string> known_;                            // device ids
  std::string out_;
};

}  // namespace

const char* linkColour(std::int32_t status) {
  for (const StatusColour& row : kStatusColours) {
    if (row.status == status) return row.colour;
  }
  return kUnknownColour;
}

std::string dotText(const NetworkPicture& picture) { return DotWriter(picture).write(); }

}  // namespace ormaagent
