#include "subnetlinks.h"

#include <algorithm>
#include <utility>

namespace emf {
namespace {

constexpr std::size_t kNoPlace = static_cast<std::size_t>(-1);
constexpr char kSeparator = '/';

// An empty prefix leaves no separator; an empty label behind a prefix leaves an empty piece.
void prepend(const std::string& prefix, std::string& text) {
  if (prefix.empty()) return;
  std::string joined;
  joined.reserve(prefix.size() + 1 + text.size());
  joined.append(prefix).append(1, kSeparator).append(text);
  text.swap(joined);
}

// The labels of a cycle that stand above and at `member`, each once. labels[i + 1] is the parent
// of labels[i], and the first that of the last.
std::string linkInCycle(const std::vector<std::string>& labels, std::size_t member) {
  std::string link;
  for (std::size_t above = labels.size(); above-- > 0;) {
    if (!link.empty()) link += kSeparator;
    link += labels[(member + above) % labels.size()];
  }
  return link;
}

}  // namespace

SubnetLinks::SubnetLinks(const SubnetList& list, LinkTraces& traces)
    : list_(list), traces_(traces), subnets_(list.size()), places_(list.size()) {}

void SubnetLinks::rebuild(std::map<std::string, std::string>& links) {
  links.clear();
  auto last = links.end();
  for (std::size_t place = 0; place < subnets_.size(); ++place) {
    if (place == indexed_) indexNext();
    Subnet& subnet = subnets_[place];
    if (!subnet.first) continue;
    resolve(place);
    traceEnd(place, place);
    traces_.subnetLink(*subnet.link);
    // Neighbours in the list mostly are neighbours in the map.
    last = links.emplace_hint(last, subnet.key, std::move(subnet.text));
    subnet.link = &last->second;
  }
}

std::string SubnetLinks::linkOf(const std::string& key,
                                const std::map<std::string, std::string>& known) {
  const auto entry = known.find(key);
  if (entry != known.end()) return entry->second;
  known_ = &known;
  const std::size_t place = find(key);
  if (place == kNoPlace) {
    traces_.missingSubnet(key);
    return std::string();
  }
  resolve(place);
  traceEnd(place, 0);
  return *subnets_[place].link;
}

void SubnetLinks::indexNext() {
  Subnet& subnet = subnets_[indexed_];
  subnet.key = list_.key(indexed_);
  subnet.first = places_.insert(subnet.key, indexed_);
  const std::size_t place = indexed_++;
  if (!subnet.first) return;
  try {
    fetch(place);
  } catch (const std::exception&) {
    // It is raised again when a walk comes to this subnet; to find its key is no failure.
  }
}

void SubnetLinks::fetch(std::size_t place) {
  Subnet& subnet = subnets_[place];
  subnet.text = list_.label(place);
  subnet.parentKey = list_.parentKey(place);
  subnet.fetched = true;
}

// Goes through the list no further than a scan for the key would.
std::size_t SubnetLinks::find(const std::string& key) {
  if (const std::size_t* place = places_.find(key)) return *place;
  while (indexed_ < subnets_.size()) {
    indexNext();
    if (subnets_[indexed_ - 1].key == key) return indexed_ - 1;
  }
  return kNoPlace;
}

void SubnetLinks::read(std::size_t place) {
  Subnet& subnet = subnets_[place];
  if (!subnet.fetched) fetch(place);
  subnet.parent = subnet.endAt = subnet.earliest = place;
  subnet.state = State::kOnWalk;
  walk_.push_back(place);
  if (subnet.parentKey == subnet.key) return;
  if (known_ != nullptr) {
    const auto known = known_->find(subnet.parentKey);
    if (known != known_->end()) {
      prepend(known->second, subnet.text);
      return;
    }
  }
  const std::size_t parent = find(subnet.parentKey);
  if (parent == kNoPlace) {
    subnet.end = End::kMissingParent;
  } else {
    subnet.parent = parent;
  }
}

void SubnetLinks::resolve(std::size_t place) {
  walk_.clear();
  std::size_t at = place;
  while (subnets_[at].state == State::kUnread) {
    read(at);
    at = subnets_[at].parent;
  }
  const bool top = !walk_.empty() && walk_.back() == at;
  if (subnets_[at].state == State::kOnWalk && !top) resolveCycle(at);
  for (auto step = walk_.rbegin(); step != walk_.rend(); ++step) joinBelowParent(*step);
}

// Takes the cycle, which the walk ends with, off the walk.
void SubnetLinks::resolveCycle(std::size_t first) {
  const auto begin = std::find(walk_.begin(), walk_.end(), first);
  const std::vector<std::size_t> cycle(begin, walk_.end());
  walk_.erase(begin, walk_.end());
  std::vector<std::string> labels;
  labels.reserve(cycle.size());
  for (std::size_t place : cycle) labels.push_back(std::move(subnets_[place].text));
  const bool named = std::any_of(labels.begin(), labels.end(),
                                 [](const std::string& label) { return !label.empty(); });
  for (std::size_t member = 0; member < cycle.size(); ++member) {
    Subnet& subnet = subnets_[cycle[member]];
    subnet.text = named ? linkInCycle(labels, member) : std::string();
    subnet.link = &subnet.text;
    subnet.end = End::kCycle;
    subnet.state = State::kResolved;
  }
}

void SubnetLinks::joinBelowParent(std::size_t place) {
  Subnet& subnet = subnets_[place];
  if (subnet.parent != place) {
    const Subnet& parent = subnets_[subnet.parent];
    prepend(*parent.link, subnet.text);
    subnet.end = parent.end;
    subnet.endAt = parent.endAt;
    subnet.earliest = std::min(place, parent.earliest);
  }
  subnet.link = &subnet.text;
  subnet.state = State::kResolved;
}

// A walk that starts at that turn says how it ended, unless it meets a subnet whose turn is over.
void SubnetLinks::traceEnd(std::size_t place, std::size_t turn) {
  const Subnet& subnet = subnets_[place];
  if (subnet.endAt != place && subnets_[subnet.parent].earliest < turn) return;
  if (subnet.end == End::kMissingParent) traces_.missingSubnet(subnets_[subnet.endAt].parentKey);
  if (subnet.end == End::kCycle) traces_.repeatedSubnet(subnets_[subnet.endAt].key);
}

}  // namespace emf
