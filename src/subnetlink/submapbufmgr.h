// The subnet-link buffer: for each real network element, the chain of subnets that it lies in, as
// one text ("Region/City/Site"). A background thread rebuilds it every 1800 seconds.
//
//   SubmapBufMgr::Instance()->InitBuf();
//   std::string link;
//   SubmapBufMgr::Instance()->GetSubmapName(link, 12);
//   SubmapBufMgr::Instance()->Stop();
//
// Thread-safety: GetSubmapName and QueryTopoView are thread-safe; InitBuf, Stop, ClearBuf and
// Destroy belong to the thread that starts and stops the service, and everything below "one
// refresh" to the thread that refreshes.
#pragma once

#include <ace/RW_Mutex.h>
#include <ace/Task.h>
#include <json/value.h>

#include <initializer_list>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "southrecords.h"

class SubmapBufMgr : public ACE_Task_Base {
 public:
  // The singleton, made at the first call; null only when the process-wide lock fails.
  static SubmapBufMgr* Instance();
  // Deletes the singleton if there is one. The thread must have been stopped.
  static void Destroy();

  // Empties the buffers and starts the thread. A thread that already runs goes on.
  void InitBuf();
  // Asks the thread to leave and waits for it: up to 1800 seconds and one refresh. The result of
  // waiting; without a thread it returns at once.
  int Stop();
  // Stops, then empties the buffers.
  void ClearBuf();
  // The thread's body: refresh, sleep, until stopped. Always 0.
  int svc() override;

  // Replaces `link` by the link of that device, empty when there is none.
  void GetSubmapName(std::string& link, const unsigned long& deviceId);
  // Appends every topology view object that matches, over all pages; a failure, logged, leaves
  // what came before it. Blocks in REST exchanges. Nothing is thrown but std::bad_alloc.
  void QueryTopoView(const Json::Value& filter, std::vector<Json::Value>& objects);

  // One refresh: reads nodes and subnets, rebuilds both maps from whatever arrived. A read that
  // fails empties them. Lets nothing out.
  void QuerySubnetAndNodesInfo();

  // Appends the topology nodes of these classes, over all pages. False when a page failed; what
  // came before stays. Json::LogicError when an answer has members of a wrong type.
  bool QueryNodesByClass(std::initializer_list<std::string> classes,
                         std::vector<Json::Value>& objects);
  // Rebuild the links of all subnets, holding the lock; then those of all devices, from the links
  // of the subnets. A list that cannot be read raises Json::LogicError and leaves the entries made
  // before.
  void refreshSubnetNameLink(const std::vector<Json::Value>& subnets);
  void refreshDeviceSubnetNameLink(const std::vector<Json::Value>& nodes);
  // The link of one subnet, from the links known or else from the list; empty, and traced, when
  // it is in neither. Takes no lock: no refresh may run beside it.
  std::string getParentLinkSubnetName(const std::string& subnetKey,
                                      const std::vector<Json::Value>& subnets);

  // The same over southbound records, whose keys are taken as they stand.
  void refreshSubnetNameLink(const std::vector<emf::SouthSubnet>& subnets);
  void refreshDeviceSubnetNameLink(const std::vector<emf::SouthDevice>& devices);
  std::string getParentLinkSubnetName(const std::string& subnetKey,
                                      const std::vector<emf::SouthSubnet>& subnets);

  // Whether a native id names a network element and no part of one.
  static bool IsRealNE(const std::string& nativeId);
  // Whether the list's "Origin" is "1". Meant so: without one the element counts as an origin
  // element, which is traced.
  static bool OriginNE(const std::vector<std::pair<std::string, std::string>>& asnKeyVal);

 private:
  SubmapBufMgr() = default;
  ~SubmapBufMgr() override = default;

  // What activate gives.
  int startThread();
  // What wait gives; returns when no thread runs.
  int awaitThread();

  std::map<unsigned long, std::string> m_devSubnetLink;  // device number to link
  std::map<std::string, std::string> m_subnetLink;       // "S" and the object id to link
  ACE_RW_Mutex m_rwLock;                                 // guards both maps
  bool m_bStop = false;                                  // atomic access only
  bool m_bRefreshed = false;                             // atomic access only

  static SubmapBufMgr* m_pInstance;
};
