// The subnet-link buffer: for each real network element, the chain of subnets that it lies in, as
// one text ("Region/City/Site"). A background thread rebuilds it every 1800 seconds.
//
//   SubmapBufMgr::Instance()->InitBuf();
//   std::string link;
//   SubmapBufMgr::Instance()->GetSubmapName(link, 12);
//   SubmapBufMgr::Instance()->Stop();
//
// Thread-safety: GetSubmapName and QueryTopoView are thread-safe; InitBuf, Stop, ClearBuf and
// Destroy belong to the thread that starts and stops the service.
#pragma once

#include <ace/RW_Mutex.h>
#include <ace/Task.h>
#include <json/value.h>

#include <initializer_list>
#include <map>
#include <string>
#include <utility>
#include <vector>

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
  // what came before it. Blocks in REST exchanges.
  void QueryTopoView(const Json::Value& filter, std::vector<Json::Value>& objects);
  // One refresh. Lets nothing out.
  void QuerySubnetAndNodesInfo();

 private:
  SubmapBufMgr() = default;
  ~SubmapBufMgr() override = default;

  std::map<unsigned long, std::string> m_devSubnetLink;  // device number to link
  std::map<std::string, std::string> m_subnetLink;       // "S" and the object id to link
  ACE_RW_Mutex m_rwLock;                                 // guards both maps
  bool m_bStop = false;       // atomic access only
  bool m_bRefreshed = false;  // atomic access only

  static SubmapBufMgr* m_pInstance;
};
