#include "submapbufmgr.h"

#include <ace/Thread_Manager.h>
#include <poll.h>
#include <time.h>

#include "caughtfailure.h"
#include "emfglobal.h"
#include "orma/rest/nbi_http_proxy.h"
#include "rwlockguard.h"
#include "singleton.h"

namespace {

constexpr char kSourceName[] = "submapbufmgr";
constexpr int kViewFailureLevel = 3;
constexpr timespec kRefreshInterval = {1800, 0};

constexpr long kThreadFlags = 2;  // THR_NEW_LWP: a thread that wait() joins
constexpr int kThreadCount = 1;
constexpr int kRetryMilliseconds = 20;
constexpr int kNoForce = 0;
constexpr int kNoGroup = -1;

// The flags are plain by their type; the task thread and its masters meet in them all the same.
bool isSet(const bool& flag) { return __atomic_load_n(&flag, __ATOMIC_ACQUIRE); }
void assign(bool& flag, bool value) { __atomic_store_n(&flag, value, __ATOMIC_RELEASE); }

// The marker of the page behind this one, empty when there is none. This service says "hasNext"
// as a JSON boolean; nothing else counts.
std::string nextMarker(const Json::Value& response) {
  if (!response.isObject() || response["hasNext"] != Json::Value(true)) return std::string();
  const Json::Value& marker = response["marker"];
  return marker.isConvertibleTo(Json::stringValue) ? marker.asString() : std::string();
}

void moveObjects(Json::Value& response, std::vector<Json::Value>& objects) {
  if (!response.isObject()) return;
  Json::Value& list = response["dataList"];
  if (!list.isArray()) return;
  for (Json::Value& object : list) objects.push_back(std::move(object));
}

}  // namespace

SubmapBufMgr* SubmapBufMgr::m_pInstance = nullptr;

SubmapBufMgr* SubmapBufMgr::Instance() {
  return emf::singletonInstance(m_pInstance, [] { return new SubmapBufMgr; });
}

void SubmapBufMgr::Destroy() {
  emf::destroySingleton(m_pInstance, [](SubmapBufMgr* instance) { delete instance; });
}

void SubmapBufMgr::InitBuf() {
  emf::WriteGuard guard(m_rwLock);
  m_devSubnetLink.clear();
  m_subnetLink.clear();
  assign(m_bStop, false);
  assign(m_bRefreshed, false);
  const int result = startThread();
  if (result == 0) {
    EMF_TRACE(kSourceName, TaTrace("[SubmapBufMgr::InitBuf] SubmapBufMgr::svc is activated"));
  } else {
    EMF_TRACE(kSourceName,
              TaTrace("[SubmapBufMgr::InitBuf] Failed to activate SubmapBufMgr::svc,errCode is %d",
                      result));
  }
}

// ACE starts a thread by its manager of threads, and crashes over one that there was no memory for.
int SubmapBufMgr::startThread() {
  if (thr_mgr() == nullptr && ACE_Thread_Manager::instance() == nullptr) return -1;
  return activate(kThreadFlags, kThreadCount, kNoForce, ACE_DEFAULT_THREAD_PRIORITY, kNoGroup,
                  nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
}

int SubmapBufMgr::Stop() {
  assign(m_bStop, true);
  return awaitThread();
}

// ACE needs memory for its list of whom to wait for. While there is none, the thread still uses
// this object, which is deleted next.
int SubmapBufMgr::awaitThread() {
  int result = wait();
  while (result == -1 && thr_count() > 0) {
    ::poll(nullptr, 0, kRetryMilliseconds);
    result = wait();
  }
  return result;
}

void SubmapBufMgr::ClearBuf() {
  assign(m_bStop, true);
  awaitThread();
  emf::WriteGuard guard(m_rwLock);
  m_devSubnetLink.clear();
  m_subnetLink.clear();
}

// The stop flag is looked at before the sleep and not behind it, and nothing wakes the sleep: a
// stop that comes during it costs the rest of it and one refresh. Meant so.
int SubmapBufMgr::svc() {
  while (!isSet(m_bStop)) {
    try {
      if (!isSet(m_bRefreshed)) {
        EMF_TRACE(kSourceName,
                  TaTrace("SubmapBufMgr::svc Device to Submap buffer refresh the first time."));
      } else {
        nanosleep(&kRefreshInterval, nullptr);
      }
      assign(m_bRefreshed, true);
      QuerySubnetAndNodesInfo();
    } catch (...) {
      emf::tellOfCaught(
          [](int errCode) {
            EMF_TRACE(kSourceName,
                      TaTrace("SubmapBufMgr::svc Catch processException,errCode = %d", errCode));
          },
          [] { EMF_TRACE(kSourceName, TaTrace("SubmapBufMgr::svc Catch unknown exception")); });
      assign(m_bRefreshed, true);  // also behind a trace that threw: the next round sleeps
    }
  }
  return 0;
}

void SubmapBufMgr::GetSubmapName(std::string& link, const unsigned long& deviceId) {
  link.clear();
  emf::ReadGuard guard(m_rwLock);
  const auto entry = m_devSubnetLink.find(deviceId);
  if (entry != m_devSubnetLink.end()) link = entry->second;
}

void SubmapBufMgr::QueryTopoView(const Json::Value& filter, std::vector<Json::Value>& objects) {
  std::string marker;
  do {
    Json::Value response;
    if (!NS_UTIL::NBIHTTPProxy::getTopoSubnetViewInfo(filter, marker, response)) {
      // No way out here: a failed exchange leaves no page to read and none to go on to.
      EMF_LOG(GetDomainLog(), kSourceName, LogFormat, kViewFailureLevel,
              "[_NS_UTIL::NBIHTTPPROXY::getTopoSubnetViewInfo] failed!");
    }
    moveObjects(response, objects);
    marker = nextMarker(response);
  } while (!marker.empty());
}
