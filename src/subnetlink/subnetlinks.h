// The links of a list of subnets: labels from the root down, joined by "/".
//
//   std::map<std::string, std::string> links;
//   const emf::JsonSubnets list(objects);
//   emf::SubnetLinks(list, links, traces).rebuild();
//
// Every subnet is read once and its link joined once, whatever the order of the list. The links,
// and what is traced in which order, are those of a walk from each subnet, in list order, up to
// the first subnet that has its link already, to a root, or to a parent that is not in the list.
// In a cycle a walk ends where it would meet a subnet again; once on a cycle it goes all the way
// round, past finished links too, so that each link names every subnet of the cycle once.
//
// Thread-safety: thread-compatible. What reading the list raises goes through; `links` then holds
// the subnets whose turn was over.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <unordered_map>
#include <vector>

#include "linktraces.h"
#include "subnetlist.h"

namespace emf {

class SubnetLinks {
 public:
  // Subnets that `links` holds count as computed. All three must outlive this object.
  SubnetLinks(const SubnetList& list, std::map<std::string, std::string>& links,
              LinkTraces& traces);

  // Adds the link of every subnet of the list; of two with one key the first counts.
  void rebuild();

  // The link of one subnet, without adding it; empty, and traced, when it is not in the list.
  std::string linkOf(const std::string& key);

 private:
  enum class State { kUnread, kOnWalk, kResolved };
  // Why a chain goes no further up; a complete one has nothing to say about it.
  enum class End { kComplete, kMissingParent, kCycle };

  struct Subnet {
    State state = State::kUnread;
    End end = End::kComplete;
    std::size_t parent = 0;    // its own place: nothing above
    std::size_t endAt = 0;     // place of the chain's last subnet; the one met again in a cycle
    std::size_t earliest = 0;  // lowest place in the chain from here to its end or to a cycle
    std::string text;          // the label, then the link until its turn comes
  };

  std::size_t find(const std::string& key);
  void read(std::size_t place);
  void resolve(std::size_t place);
  void resolveCycle(std::size_t first);
  void joinBelowParent(std::size_t place);
  void traceEnd(std::size_t place, std::size_t turn);

  const SubnetList& list_;
  std::map<std::string, std::string>& links_;
  LinkTraces& traces_;
  std::vector<Subnet> subnets_;                          // by place in the list
  std::unordered_map<std::string, std::size_t> places_;  // first place of each key met so far
  std::size_t indexed_ = 0;                              // places that have gone into places_
  std::vector<std::size_t> walk_;                        // unresolved subnets, upwards
};

}  // namespace emf
