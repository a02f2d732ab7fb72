// Answers to the property reads that the tests of labels share.
#pragma once

#include <json/value.h>

#include <list>
#include <string>
#include <vector>

#include "emfresrecords.h"
#include "platform_test.h"

namespace emf::test {

using Records = std::list<ResourceDn>;
using Fdns = std::vector<std::string>;

inline Json::Value answerWith(const std::string& objects) {
  return doubles::json(R"({"objList":[)" + objects + "]}");
}

// Every query is answered by one object for each name, of a kind that any read takes.
inline void echoNames() {
  doubles::platform().resources.answersBy(
      [](const doubles::ResourceQuery& query, Json::Value& answer) {
        answer["objList"] = Json::Value(Json::arrayValue);
        for (const std::string& fdn : query.fdns) {
          Json::Value object =
              doubles::json(R"({"portType":1,"isDaughterCard":false,"cardType":1,"frameType":"1",)"
                            R"("detailDevType":1})");
          object["nativeId"] = object["slotNativeId"] = fdn;
          object["name"] = "label of " + fdn;
          answer["objList"].append(object);
        }
        return true;
      });
}

inline Fdns namesOf(const Records& records) {
  Fdns names;
  for (const ResourceDn& record : records) names.push_back(record.resDN);
  return names;
}

}  // namespace emf::test
