// The links of a list of subnets: labels from the root down, joined by "/".
//
//   const emf::JsonSubnets list(objects);
//   emf::SubnetLinks(list, traces).rebuild(links);
//
// Every subnet is read once and its link joined once, whatever the order of the list. The links,
// and what is traced in which order, are those of a walk from each subnet, in list order, up to
// the first subnet that has its link already, to a root, or to a parent that is not in the list.
// In a cycle a walk ends where it would meet a subnet again; once on a cycle it goes all the way
// round, past finished links too, so that each link names every subnet of the cycle once.
//
// Thread-safety: thread-compatible; one call an object. What reading the list raises goes through
// at the point where the plain walks, with a scan for each parent, would meet it.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "linktraces.h"
#include "subnetlist.h"
#include "textindex.h"

namespace emf {

class SubnetLinks {
 public:
  // Both must outlive this object.
  SubnetLinks(const SubnetList& list, LinkTraces& traces);

  // Replaces `links` by those of all subnets; of two with one key the first counts. When reading
  // raises, the subnets whose turn was over have their links.
  void rebuild(std::map<std::string, std::string>& links);

  // The link of one subnet, taken from the known ones or built upon them; empty, and traced, when
  // it is neither known nor in the list.
  std::string linkOf(const std::string& key, const std::map<std::string, std::string>& known);

 private:
  enum class State { kUnread, kOnWalk, kResolved };
  // Why a chain goes no further up; a complete one has nothing to say about it.
  enum class End { kComplete, kMissingParent, kCycle };

  struct Subnet {
    std::string key;
    std::string parentKey;
    std::string text;                   // the label, then the link until its turn comes
    const std::string* link = nullptr;  // once it is resolved
    std::size_t parent = 0;             // its own place: nothing above
    std::size_t endAt = 0;     // place of the chain's last subnet; the one met again in a cycle
    std::size_t earliest = 0;  // lowest place in the chain from here to its end or to a cycle
    State state = State::kUnread;
    End end = End::kComplete;
    bool first = false;    // of all with its key
    bool fetched = false;  // label and parent key are here
  };

  void indexNext();
  void fetch(std::size_t place);
  std::size_t find(const std::string& key);
  void read(std::size_t place);
  void resolve(std::size_t place);
  void resolveCycle(std::size_t first);
  void joinBelowParent(std::size_t place);
  void traceEnd(std::size_t place, std::size_t turn);

  const SubnetList& list_;
  LinkTraces& traces_;
  const std::map<std::string, std::string>* known_ = nullptr;  // when one link is asked for
  std::vector<Subnet> subnets_;                                // by place in the list
  TextIndex<std::size_t> places_;                              // first place of each key
  std::size_t indexed_ = 0;                                    // places that are in places_
  std::vector<std::size_t> walk_;                              // unresolved subnets, upwards
};

}  // namespace emf
