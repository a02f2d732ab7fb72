// The REST client: exchanges answered by script, each request recorded as it was sent.
//
//   platform().rest.answers("/rest/topology/v3/tsnodes", page);
//   platform().rest.fails("/rest/topology/v3/tsnodes");
//   EXPECT_EQ(platform().rest.requests().at(0).url, …);
//
// Answers to one path are used up in the order of their scripting; an exchange that nothing was
// scripted for fails. JSON texts in scripts are parsed by json().
//
// Thread-safety: thread-safe. Hooks run without a lock.
#pragma once

#include <json/value.h>

#include <deque>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "restreq.h"

namespace emf::doubles {

// The value of a JSON text; throws std::invalid_argument when it is none.
Json::Value json(const std::string& text);
// Compact text, keys in order: for comparisons.
std::string compact(const Json::Value& value);

// One exchange with the topology view service.
struct TopoViewQuery {
  Json::Value filter;
  std::string marker;
  Json::Value responseBefore;  // what the caller handed in
};

class RestDouble {
 public:
  using Hook = std::function<void()>;

  // --- SendRestReq
  void answers(const std::string& url, const Json::Value& response);
  // A failed exchange; it leaves `response` behind.
  void fails(const std::string& url, const Json::Value& response = Json::Value());
  // Answers from now on, for paths without a script left, as the function says.
  using Responder = std::function<bool(const Nimbola::RestReq&, Json::Value&)>;
  void answersBy(Responder responder);
  // Every request sent, and the response value that came with it.
  std::vector<Nimbola::RestReq> requests() const;
  std::vector<Json::Value> responsesBefore() const;

  // --- MakeRestReq and Json2PostData
  // What MakeRestReq gives; after a reset: target "made-target", url "made-url", extra
  // {"made":true}, option 2^63 + 7, method 99, mode 8, and null bodies.
  void madeRequest(const Nimbola::RestReq& request);
  // What becomes of a query document; unchanged after a reset.
  void postDataBecomes(std::function<Json::Value(const Json::Value&)> conversion);
  // Every document given to Json2PostData.
  std::vector<Json::Value> documents() const;

  // --- NBIHTTPProxy::GetAllDevProperty
  // What every read gives from now on; nothing, with failure, after a reset.
  void devices(std::vector<Json::Value> objects, bool result = true);
  // An outage: reads give nothing and false.
  void devicesFail();
  // Runs inside each read, before it answers.
  void duringDeviceRead(Hook hook);
  int deviceReads() const;

  // --- NBIHTTPProxy::getTopoSubnetViewInfo
  void topoViewAnswers(const Json::Value& response);
  void topoViewFails();
  std::vector<TopoViewQuery> topoViewQueries() const;

  // --- Type lookups: an FDN without a script has MAIN_TYPE_UNKNOWN; the field of main type n is
  // "subTypeOf<n>".
  void mainType(const std::string& fdn, Nimbola::MainType type);

  void reset();

  Nimbola::MainType mainTypeOf(const std::string& fdn) const;
  Nimbola::RestReq make() const;
  bool send(const Nimbola::RestReq& request, Json::Value& response);
  Json::Value toPostData(const Json::Value& document);
  bool readDevices(std::vector<Json::Value>& out);
  bool topoView(const TopoViewQuery& query, Json::Value& response);

 private:
  struct Answer {
    bool sent;
    Json::Value response;
  };
  mutable std::mutex mutex_;
  std::map<std::string, std::deque<Answer>> answers_;
  Responder responder_;
  std::vector<Nimbola::RestReq> requests_;
  std::vector<Json::Value> responsesBefore_;
  Nimbola::RestReq made_;
  std::function<Json::Value(const Json::Value&)> postData_;
  std::vector<Json::Value> documents_;
  bool devicesSent_ = false;
  std::vector<Json::Value> devices_;
  Hook duringDeviceRead_;
  int deviceReads_ = 0;
  std::deque<Answer> topoViewAnswers_;
  std::vector<TopoViewQuery> topoViewQueries_;
  std::map<std::string, Nimbola::MainType> mainTypes_;
};

}  // namespace emf::doubles
