// One refresh of SubmapBufMgr.
#include <utility>

#include "caughtfailure.h"
#include "devicelinks.h"
#include "emfglobal.h"
#include "paginators.h"
#include "restquery.h"
#include "rwlockguard.h"
#include "submapbufmgr.h"
#include "subnetlinks.h"
#include "watchedcall.h"

namespace {

constexpr char kSourceName[] = "submapbufmgr";
constexpr int kLinkLevel = 3;
constexpr std::uint32_t kNodesPerPage = 200;

class JsonTraces : public emf::LinkTraces {
 public:
  void missingSubnet(const std::string& key) override {
    EMF_TRACE(kSourceName,
              TaTrace("getParentLinkSubnetName strSubnetworkID[%s] is not exists", key.c_str()));
  }
  void repeatedSubnet(const std::string& key) override {
    EMF_TRACE(
        kSourceName,
        TaTrace("getParentLinkSubnetName strSubnetworkID[%s] is its own ancestor", key.c_str()));
  }
  void subnetLink(const std::string& link) override {
    EMF_TRACE(kSourceName, TaDebugWithPara(kLinkLevel, "strSNLink = %s", link.c_str()));
  }
  void notRealElement(const std::string& nativeId) override {
    EMF_TRACE(kSourceName,
              TaTrace("SubmapBufMgr::refreshDeviceSubnetNameLink pass not real NE device[%s]",
                      nativeId.c_str()));
  }
  void notOriginElement(const std::string& nativeId) override {
    EMF_TRACE(kSourceName,
              TaTrace("SubmapBufMgr::refreshDeviceSubnetNameLink pass not origin NE device[%s]",
                      nativeId.c_str()));
  }
  void noOriginField() override {
    EMF_TRACE(kSourceName,
              TaTrace("[SubmapBufMgr::OriginNE] Failed to find Origin field from asnKeyVal"));
  }
  void missingParent(const std::string& nativeId, unsigned long,
                     const std::string& parentKey) override {
    EMF_TRACE(kSourceName,
              TaTrace("SubmapBufMgr::refreshDeviceSubnetNameLink device[%s]'s parentId[%s] not "
                      "exists",
                      nativeId.c_str(), parentKey.c_str()));
  }
};

// The messages over records differ in two texts; the two blanks are meant.
class RecordTraces : public JsonTraces {
 public:
  void missingSubnet(const std::string& key) override {
    EMF_TRACE(kSourceName,
              TaTrace("getParentLinkSubnetName  strSubnetworkID[%s] is not exists", key.c_str()));
  }
  void missingParent(const std::string&, unsigned long number,
                     const std::string& parentKey) override {
    EMF_TRACE(kSourceName,
              TaTrace("SubmapBufMgr::refreshDeviceSubnetNameLink device[%d]'s parent submapID[%s] "
                      "not exists",
                      static_cast<int>(number), parentKey.c_str()));
  }
};

Nimbola::RestReq nodeRequest(std::initializer_list<std::string> classes) {
  Json::Value names(Json::arrayValue);
  for (const std::string& name : classes) names.append(name);
  Nimbola::TsNodesQuery query;
  query.conditions =
      Nimbola::SimpleConditions{{"nodeClass", std::move(names), Nimbola::OPERATOR_IN, false}};
  return query.ToRestReq();
}

}  // namespace

void SubmapBufMgr::QuerySubnetAndNodesInfo() {
  emf::WatchedCall call(kEmfSubnetRefresh);
  try {
    std::vector<Json::Value> nodes;
    std::vector<Json::Value> subnets;
    // Meant so: the maps mirror whatever came. The results matter to a host that watches.
    if (!QueryNodesByClass({"ne", "container"}, nodes)) call.fail();
    if (!QueryNodesByClass({"subnet"}, subnets)) call.fail();
    refreshSubnetNameLink(subnets);
    refreshDeviceSubnetNameLink(nodes);
    // No other thread changes the maps.
    emf::tellCacheFilled("subnets", m_subnetLink.size());
    emf::tellCacheFilled("subnet_names", m_devSubnetLink.size());
  } catch (...) {
    call.fail();
    emf::tellOfCaught(
        [](int errCode) {
          EMF_TRACE(kSourceName,
                    TaTrace("QuerySubnetAndNodesInfo processException,errCode = %d", errCode));
        },
        [] { EMF_TRACE(kSourceName, TaTrace("QuerySubnetAndNodesInfo Catch unknown exception")); });
  }
}

bool SubmapBufMgr::QueryNodesByClass(std::initializer_list<std::string> classes,
                                     std::vector<Json::Value>& objects) {
  Nimbola::MarkerPaginator pages(nodeRequest(classes));
  pages.listKey = "dataList";
  pages.limit = kNodesPerPage;
  while (pages.hasMore) {
    Json::Value page;
    if (!pages.NextPage(page)) return false;
    for (Json::Value& object : page) objects.push_back(std::move(object));
  }
  return true;
}

void SubmapBufMgr::refreshSubnetNameLink(const std::vector<Json::Value>& subnets) {
  emf::WriteGuard guard(m_rwLock);
  JsonTraces traces;
  emf::SubnetLinks(emf::JsonSubnets(subnets), traces).rebuild(m_subnetLink);
}

void SubmapBufMgr::refreshSubnetNameLink(const std::vector<emf::SouthSubnet>& subnets) {
  emf::WriteGuard guard(m_rwLock);
  RecordTraces traces;
  emf::SubnetLinks(emf::RecordSubnets(subnets), traces).rebuild(m_subnetLink);
}

std::string SubmapBufMgr::getParentLinkSubnetName(const std::string& subnetKey,
                                                  const std::vector<Json::Value>& subnets) {
  JsonTraces traces;
  return emf::SubnetLinks(emf::JsonSubnets(subnets), traces).linkOf(subnetKey, m_subnetLink);
}

std::string SubmapBufMgr::getParentLinkSubnetName(const std::string& subnetKey,
                                                  const std::vector<emf::SouthSubnet>& subnets) {
  RecordTraces traces;
  return emf::SubnetLinks(emf::RecordSubnets(subnets), traces).linkOf(subnetKey, m_subnetLink);
}

void SubmapBufMgr::refreshDeviceSubnetNameLink(const std::vector<Json::Value>& nodes) {
  emf::WriteGuard guard(m_rwLock);
  JsonTraces traces;
  emf::rebuildDeviceLinks(emf::JsonDevices(nodes), m_subnetLink, m_devSubnetLink, traces);
}

void SubmapBufMgr::refreshDeviceSubnetNameLink(const std::vector<emf::SouthDevice>& devices) {
  emf::WriteGuard guard(m_rwLock);
  RecordTraces traces;
  emf::rebuildDeviceLinks(emf::RecordDevices(devices), m_subnetLink, m_devSubnetLink, traces);
}

bool SubmapBufMgr::IsRealNE(const std::string& nativeId) { return emf::isRealElement(nativeId); }

bool SubmapBufMgr::OriginNE(const std::vector<std::pair<std::string, std::string>>& asnKeyVal) {
  RecordTraces traces;
  return emf::isOriginElement(asnKeyVal, traces);
}
