// The platform's alarm queries over REST: answered by script, each query recorded.
//
//   platform().alarms.answersBy([](const AlarmQuery& query, Json::Value& answer) {
//     answer = json(R"({"totalCount":0})");
//     return true;
//   });
//   EXPECT_THAT(platform().alarms.queries(), ElementsAre(FieldsAre("QueryAlarmReasonInfo", …)));
//
// Thread-safety: thread-safe. The script runs without a lock; what it throws leaves the query.
#pragma once

#include <json/value.h>

#include <functional>
#include <mutex>
#include <string>
#include <vector>

namespace emf::doubles {

struct AlarmQuery {
  std::string operation;     // "QueryAlarmDefinitionInfo" or a neighbour
  std::string body;          // as it was sent
  Json::Value answerBefore;  // what the caller handed in
};

class AlarmRestDouble {
 public:
  using Responder = std::function<bool(const AlarmQuery&, Json::Value& answer)>;

  // How every query is answered from now on; after a reset each fails and leaves null.
  void answersBy(Responder responder);
  std::vector<AlarmQuery> queries() const;
  void reset();

  bool query(const char* operation, const std::string& body, Json::Value& answer);

 private:
  mutable std::mutex mutex_;
  Responder responder_;
  std::vector<AlarmQuery> queries_;
};

}  // namespace emf::doubles
