#include "resource_fixture.h"

#include <json/writer.h>

namespace ormasim::testing {
namespace {

// The members that tell the kind of an object, and its main type.
struct Form {
  const char* name;
  const char* type;
  int mainType;
};

constexpr Form kForms[] = {
    {"nativeId", "detailDevType", 1},    {"nativeId", "frameType", 3},
    {"slotNativeId", "cardType", 4},     {"slotNativeId", "daughterCardType", 5},
    {"nativeId", "portType", 6},         {"nativeId", "cardType", 20},
    {"nativeId", "daughterCardType", 21}};

std::string joined(const std::vector<std::string>& texts) {
  std::string text;
  for (const std::string& one : texts) text += (text.empty() ? "" : ",") + one;
  return text;
}

}  // namespace

Json::Value ResourceTest::posted(const std::string& path, const std::string& body) {
  const httplib::Result result = post(path, body);
  if (!result) {
    ADD_FAILURE() << "no answer to " << body;
    return {};
  }
  EXPECT_EQ(result->status, 200) << result->body;
  return json(result->body);
}

Json::Value ResourceTest::properties(const std::string& kind,
                                     const std::vector<std::string>& names) {
  std::vector<std::string> quoted;
  for (const std::string& name : names) quoted.push_back("\"" + name + "\"");
  const Json::Value answer = posted("/rest/resource/v2/" + kind + "-properties",
                                    R"({"nativeIds":[)" + joined(quoted) + "]}");
  EXPECT_EQ(answer.getMemberNames(), std::vector<std::string>{"objList"});
  return answer["objList"];
}

std::vector<Json::Value> ResourceTest::walk(const std::string& path, const std::string& members,
                                            std::size_t& pages, const char* list) {
  std::vector<Json::Value> objects;
  std::string marker;
  for (pages = 1; pages < 10'000; ++pages) {
    const Json::Value page = posted(path, "{" + members + marker + "}");
    for (const Json::Value& object : page[list]) objects.push_back(object);
    if (!page["isTruncated"].asBool()) {
      EXPECT_EQ(page["marker"], "");
      return objects;
    }
    marker = R"(,"marker":")" + page["marker"].asString() + "\"";
  }
  ADD_FAILURE() << "the pages do not end";
  return objects;
}

std::vector<Json::Value> ResourceTest::contained(const std::string& element, int limit,
                                                 std::size_t& pages) {
  std::vector<Json::Value> objects;
  std::string body = graphQuery(element, R"(,"limit":)" + std::to_string(limit));
  for (pages = 1; pages < 10'000; ++pages) {
    const Json::Value page = posted(kGraphQuery, body);
    for (const Json::Value& object : page["objList"]) objects.push_back(object);
    const std::string id = page["queryId"].asString();
    if (id.empty()) return objects;
    body = R"({"query-id":")" + id + "\"}";
  }
  ADD_FAILURE() << "the pages do not end";
  return objects;
}

std::string ResourceTest::graphQuery(const std::string& element, const std::string& more) {
  return R"({"query-text":"\"g.V(')" + element +
         R"(').hasLabel('FixedNetworkElement').out('Has')\"")" + more + "}";
}

std::string ResourceTest::condition(const std::string& logOp,
                                    const std::vector<std::string>& expressions) {
  return R"({"filter":{"logOp":")" + logOp + R"(","simple":[)" + joined(expressions) + "]}}";
}

std::string line(const Json::Value& object) {
  for (const Form& form : kForms) {
    if (!object.isMember(form.name) || !object.isMember(form.type)) continue;
    const bool withFlag = object.isMember("isDaughterCard");
    EXPECT_EQ(object.size(), withFlag ? 4u : 3u) << object;
    EXPECT_EQ(withFlag, form.mainType == 4 || form.mainType == 5 || form.mainType >= 20);
    if (withFlag) {
      EXPECT_EQ(object["isDaughterCard"],
                Json::Value(form.type == std::string("daughterCardType")));
    }
    EXPECT_EQ(object[form.type].isString(), form.mainType == 3) << object;
    return std::to_string(form.mainType) + "|" + object[form.name].asString() + "|" +
           object["name"].asString() + "|" + object[form.type].asString();
  }
  return "an object of no kind";
}

std::vector<std::string> lines(const std::vector<Json::Value>& objects) {
  std::vector<std::string> texts;
  for (const Json::Value& object : objects) texts.push_back(line(object));
  return texts;
}

std::vector<std::string> lines(const Json::Value& array) {
  EXPECT_TRUE(array.isArray());
  return lines(std::vector<Json::Value>(array.begin(), array.end()));
}

std::string storedLines(const std::string& where) {
  return "SELECT main_type, native_id, name, sub_type FROM resource WHERE " + where +
         " ORDER BY dev_id, seq";
}

}  // namespace ormasim::testing
