// The operations that read nodes and submaps.
#include "emftopointerface.h"
#include "rest_operation_groups.h"
#include "submapbufmgr.h"

namespace emf::faults {
namespace {

constexpr char kViewFailed[] = "[_NS_UTIL::NBIHTTPPROXY::getTopoSubnetViewInfo] failed!";

Exchange nodePage(const std::string& id, const std::string& paging) {
  return {R"({"dataList":[{"parentId":"102","nativeId":"NE=)" + id +
              R"(","iconFile":"/a/router.png","exInfo":"NodeType=x;ProcID=7","label":"core-)" + id +
              R"(","ipAddr":"10.0.0.1","remark":"r","nodeClass":"ne","posX":-3,"posY":44,)" +
              R"("topoId":9}],)" + paging + "}",
          {"S102|" + id + "|" + id + "|router|x|core-" + id + "|10.0.0.1|7|2011|0|-3|44|9|r"},
          false,
          {},
          kViewFailed};
}

void addNodes(std::vector<RestOperation>& all) {
  RestOperation nodes{"EMFTopoI::getAllNodes",
                      "dataList",
                      {"0", "0", "0", ""},
                      {nodePage("12", R"("hasNext":true,"marker":"v12")"),
                       nodePage("13", R"("hasNext":false,"marker":"")")},
                      [] {
                        return appended(std::list<Node>(1), [](std::list<Node>& out) {
                          return EMFTopoI::getAllNodes("S5", out);
                        });
                      }};
  nodes.before = {earlier<Node>()};
  nodes.throws = {kLogicError, "std::out_of_range"};
  all.push_back(nodes);
  RestOperation node{"EMFTopoI::getNode",
                     "dataList",
                     {"0", "0", "0", ""},
                     {nodePage("12", R"("hasNext":false,"marker":"")")},
                     [] {
                       SimNode key;
                       key.nodeId = "12";
                       return written(Node(),
                                      [&](Node& out) { return EMFTopoI::getNode(key, out); });
                     }};
  // The icon's whole path here.
  node.exchanges[0].records = {"S102|12|12|/a/router.png|x|core-12|10.0.0.1|7|2011|0|-3|44|9|r"};
  node.before = {earlier<Node>()};
  node.replaces = true;
  node.throws = nodes.throws;
  all.push_back(node);
}

std::string subnet(const std::string& id, const std::string& parent, const std::string& topoId) {
  return R"({"objId":")" + id + R"(","parentId":")" + parent + R"(","label":"net )" + id +
         R"(","iconFile":"i.png","exInfo":"a ProcID 12 b","topoClassId":5,"typeId":200,"posX":1,)" +
         R"("posY":2,"topoId":)" + topoId + "}";
}

std::string dataList(const std::string& objects, const std::string& marker) {
  return R"({"dataList":[)" + objects + R"(],"isTruncated":)" +
         (marker.empty() ? "false" : "true") + R"(,"marker":")" + marker + R"("})";
}

RestOperation submapOperation(const std::string& name, const RestResults& results,
                              std::vector<Exchange> exchanges, const std::string& failureLine,
                              std::function<Outcome()> call) {
  RestOperation operation{name, "dataList", results, std::move(exchanges), std::move(call)};
  for (Exchange& exchange : operation.exchanges) exchange.failureLine = failureLine;
  operation.before = {earlier<SubMap>()};
  operation.throws = {kLogicError};
  return operation;
}

// The lookup of the root's id that comes first: what becomes of it the operation only logs.
Exchange rootLookup() {
  return {dataList(subnet("102", "102", "101"), ""),
          {},
          true,
          {},
          "[NBIHTTPProxy::GetOBJID]:call rest interface failed!"};
}

std::function<Outcome()> allSubMapsOf(const std::string& key) {
  return [key] {
    return appended(std::list<SubMap>(1),
                    [&](std::list<SubMap>& out) { return EMFTopoI::getAllSubMaps(key, out); });
  };
}

std::function<Outcome()> subMapOf(const std::string& key) {
  return [key] {
    return written(SubMap(), [&](SubMap& out) { return EMFTopoI::getSubMap(key, out); });
  };
}

void addSubmaps(std::vector<RestOperation>& all) {
  const std::string root = "ORMAP_PHY_SUBMAP|ORMAP_PHY_SUBMAP|101|net 102|i.png|5|12|1|2";
  RestOperation roots =
      submapOperation("EMFTopoI::getAllRootSubMaps", {"0", "-1", "-1", "0"},
                      {{dataList(subnet("55", "102", "1055"), "t1"), {}},
                       {dataList(subnet("102", "102", "101"), ""), {root}}},
                      "[EMFTopoI::getAllRootSubMaps] call rest interface failed!",
                      [] { return appended(std::list<SubMap>(1), EMFTopoI::getAllRootSubMaps); });
  all.push_back(roots);
  const std::string childFailed = "[NBIHTTPProxy::getAllSubMaps]:call rest interface failed!";
  RestOperation children = submapOperation(
      "EMFTopoI::getAllSubMaps", {"0", "1092092116", "1092092116", "-1"},
      {{dataList(subnet("102", "102", "101") + "," + subnet("55", "102", "1055"), "t1"),
        {"ORMAP_PHY_SUBMAP|S55|1|net 55|i.png|5|12|1|2"}},
       {dataList(subnet("56", "55", "1056"), ""), {"S55|S56|1|net 56|i.png|5|12|1|2"}}},
      childFailed, allSubMapsOf("S102"));
  all.push_back(children);
  children.name += " of the root";
  children.exchanges.insert(children.exchanges.begin(), rootLookup());
  children.call = allSubMapsOf("/");
  children.keepsOrder = false;
  all.push_back(children);
  RestOperation one = submapOperation(
      "EMFTopoI::getSubMap", {"0", "1092092116", "-1", "-1"},
      {{dataList(subnet("56", "55", "1056"), ""), {"S55|S56|1|net 56|i.png|5|12|1|2"}}},
      "[NBIHTTPProxy::getSubMap]:call rest interface failed!", subMapOf("S56"));
  one.replaces = true;
  all.push_back(one);
  one.name += " of the root";
  one.exchanges = {rootLookup(), {dataList(subnet("102", "102", "101"), ""), {root}}};
  one.exchanges[1].failureLine = "[NBIHTTPProxy::getSubMap]:call rest interface failed!";
  one.call = subMapOf("/");
  one.keepsOrder = false;
  all.push_back(one);
}

// The names that a refresh leaves: they need both answers.
void addSubnetNames(std::vector<RestOperation>& all) {
  RestOperation names{
      "EMFTopoI::getSubmapName",
      "dataList",
      {"0", "0", "0", "0"},
      {{dataList(R"({"nativeId":"NE=12","origin":1,"parentId":"55"})", ""), {"net 102/net 55"}},
       {dataList(subnet("102", "102", "101") + "," + subnet("55", "102", "1055"), ""), {}}},
      [] {
        return written(std::string("earlier"), [](std::string& out) {
          SubmapBufMgr::Instance()->QuerySubnetAndNodesInfo();
          EMFTopoI::getSubmapName(out, 12);
          return 0;
        });
      }};
  names.before = {""};
  names.replaces = true;
  names.allOrNone = true;
  names.keepsOrder = false;
  all.push_back(names);
}

}  // namespace

void addTopologyOperations(std::vector<RestOperation>& all) {
  addNodes(all);
  addSubmaps(all);
  addSubnetNames(all);
}

}  // namespace emf::faults
