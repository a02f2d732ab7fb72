// The platform's resource queries over REST (properties, access resources, places and keepers):
// answered by script, each query recorded.
//
//   platform().resources.answersBy([](const ResourceQuery& query, Json::Value& answer) {
//     answer = json(R"({"objList":[]})");
//     return true;
//   });
//   EXPECT_THAT(platform().resources.queries(), SizeIs(1));
//
// Thread-safety: thread-safe. The script runs without a lock; what it throws leaves the query.
#pragma once

#include <json/value.h>

#include <functional>
#include <mutex>
#include <string>
#include <vector>

namespace emf::doubles {

struct ResourceQuery {
  std::string operation;          // "GetPortResourcePropertyByFDNs" or a neighbour
  std::vector<std::string> fdns;  // of the property reads
  std::string path;               // of GetAcessResource
  std::string body;               // of the others
  Json::Value answerBefore;       // what the caller handed in
};

class ResourceRestDouble {
 public:
  using Responder = std::function<bool(const ResourceQuery&, Json::Value& answer)>;

  // How every query is answered from now on; after a reset each fails and leaves null.
  void answersBy(Responder responder);
  // The same answer to every query.
  void answers(const Json::Value& answer, bool result = true);
  std::vector<ResourceQuery> queries() const;
  void reset();

  bool query(ResourceQuery query, Json::Value& answer);

 private:
  mutable std::mutex mutex_;
  Responder responder_;
  std::vector<ResourceQuery> queries_;
};

}  // namespace emf::doubles
