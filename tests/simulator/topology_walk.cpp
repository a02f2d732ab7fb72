#include "topology_walk.h"

#include <gtest/gtest.h>
#include <httplib.h>

#include <functional>

#include "server_fixture.h"

namespace ormasim::testing {
namespace {

using Ask = std::function<httplib::Result(const std::string& marker)>;

// `moreKey` is the flag that announces another page; it must be a flag.
WalkedPages walk(const Ask& ask, const char* moreKey, int limit) {
  WalkedPages walked;
  std::string marker;
  for (bool more = true; more; ++walked.pages) {
    const httplib::Result result = ask(marker);
    if (!result || result->status != 200) {
      ADD_FAILURE() << "page " << walked.pages + 1 << ": " << (result ? result->body : "no answer");
      return walked;
    }
    const Json::Value page = json(result->body);
    EXPECT_EQ(page.size(), 3u);
    EXPECT_LE(page["dataList"].size(), static_cast<unsigned>(limit));
    for (const Json::Value& object : page["dataList"]) walked.objects.push_back(object);
    EXPECT_TRUE(page[moreKey].isBool());
    more = page[moreKey].asBool();
    marker = page["marker"].asString();
    EXPECT_EQ(marker.empty(), !more);
    // Only the end of the objects makes a page short.
    EXPECT_TRUE(!more || page["dataList"].size() == static_cast<unsigned>(limit));
  }
  return walked;
}

}  // namespace

WalkedPages walkTsNodes(int port, const std::string& conditions, int limit) {
  httplib::Client client("127.0.0.1", port);
  client.set_keep_alive(true);
  std::string target = std::string(kTsNodes) + "?limit=" + std::to_string(limit);
  if (!conditions.empty()) {
    target += "&conditions=" + httplib::detail::encode_query_param(conditions);
  }
  const auto ask = [&](const std::string& marker) {
    return client.Get((marker.empty() ? target : target + "&marker=" + marker).c_str());
  };
  return walk(ask, "isTruncated", limit);
}

WalkedPages walkSubnetView(int port, const std::string& filter, int limit) {
  httplib::Client client("127.0.0.1", port);
  client.set_keep_alive(true);
  client.set_tcp_nodelay(true);  // or each body waits for its head to be acknowledged
  const auto ask = [&](const std::string& marker) {
    return client.Post(kSubnetView, viewBody(filter, std::to_string(limit), marker),
                       "application/json");
  };
  return walk(ask, "hasNext", limit);
}

std::string expression(const std::string& name, const std::string& word, const std::string& value,
                       const std::string& caseSensitive) {
  return "{\"caseSensitive\":" + caseSensitive + ",\"name\":\"" + name + "\",\"operator\":\"" +
         word + "\",\"value\":" + value + "}";
}

std::string conditions(const std::vector<std::string>& expressions) {
  std::string text;
  for (const std::string& one : expressions) {
    text += (text.empty() ? "" : ",") + ("{\"logOp\":\"and\",\"simple\":" + one + "}");
  }
  return "[" + text + "]";
}

std::string viewFilter(const std::string& expression) {
  return R"({"logOp":"and","simple":)" + expression + "}";
}

std::string viewBody(const std::string& filter, const std::string& limit,
                     const std::string& marker) {
  return R"({"condition":{"filter":)" + filter + R"(},"limit":)" + limit +
         (marker.empty() ? "" : R"(,"marker":")" + marker + "\"") + "}";
}

}  // namespace ormasim::testing
