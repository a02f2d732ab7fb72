// SubmapBufMgr.
#include "emftopointerface.h"
#include "operation.h"
#include "platform.h"
#include "sleeps.h"
#include "submapbufmgr.h"
#include "subnet_network.h"

namespace emf::torture {
namespace {

const std::string kOldLink = linkWith(kOldCity);
const std::string kNewLink = linkWith(kNewCity);

// Buffers of the old network, while the service tells of the new one.
void scriptFullBuffers() {
  network(kOldCity);
  SubmapBufMgr::Instance()->QuerySubnetAndNodesInfo();
  network(kNewCity);
}

void scriptNewBuffers() {
  network(kNewCity);
  SubmapBufMgr::Instance();
}

// The link that the buffers have behind a call.
template <class Call>
std::function<Outcome(const Fault&)> refreshing(void (*script)(), Call call) {
  return [script, call](const Fault& fault) {
    script();
    Outcome outcome;
    outcome.result = resultOf(fault, outcome.struck, call);
    outcome.records = {linkOfDevice()};
    return outcome;
  };
}

// A read that failed empties the links, a lack of memory may leave the old ones.
const std::map<std::string, Texts> kOtherLinks = {{kNewLink, {kOldLink, ""}}};

// In this thread; it is asked to stop in its first sleep and leaves behind a second refresh.
int runTask() {
  duringSleep([] { SubmapBufMgr::Instance()->Stop(); });
  const int result = SubmapBufMgr::Instance()->svc();
  duringSleep(nullptr);
  return result;
}

}  // namespace

const std::vector<Operation>& subnetOperations() {
  static const std::vector<Operation> rows = {
      {"EMFTopoI::getSubmapName",
       calling(scriptFullBuffers, std::string("left over"),
               [](auto& out) { EMFTopoI::getSubmapName(out, kDevice); }),
       {"done", {kOldLink}, {}},
       Left::kAnything},
      {"EMFTopoI::getSubmapName without buffers",
       calling(scriptNothing, std::string("left over"),
               [](auto& out) { EMFTopoI::getSubmapName(out, kDevice); }),
       {"done", {""}, {}},
       Left::kAnything,
       {{"mutex", {"done"}}}},
      {"SubmapBufMgr::QuerySubnetAndNodesInfo",
       refreshing(scriptFullBuffers, [] { SubmapBufMgr::Instance()->QuerySubnetAndNodesInfo(); }),
       {"done", {kNewLink}, {}},
       Left::kWhole,
       {{"REST request", {"done", "done", "done", "done"}}},
       {"done"},
       kOtherLinks,
       1,
       true},
      {"SubmapBufMgr::svc",
       refreshing(scriptNewBuffers, runTask),
       {"0", {kNewLink}, {}},
       Left::kWhole,
       {{"REST request", {"0", "0", "0", "0"}}},
       {"0"},
       kOtherLinks,
       1,
       true},
      {"SubmapBufMgr::ClearBuf",
       refreshing(scriptFullBuffers, [] { SubmapBufMgr::Instance()->ClearBuf(); }),
       {"done", {""}, {}}},
  };
  return rows;
}

}  // namespace emf::torture
