#include "paginators.h"

#include "platform_test.h"

namespace emf::test {
namespace {

using emf::doubles::compact;
using emf::doubles::json;
using emf::doubles::platform;
using Nimbola::MarkerPaginator;
using Nimbola::QueryIdPaginator;
using Nimbola::RestReq;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr char kUrl[] = "/rest/topology/v3/tsnodes";

// A request as a builder gives it, with the query in its parameter object.
RestReq request(std::uint32_t method) {
  RestReq made;
  made.target = "target";
  made.url = kUrl;
  made.method = method;
  made.mode = 4;
  made.option = 77;
  made.extra["extra"] = 1;
  (method == 2 ? made.body : made.params)["query-text"] = "all";
  return made;
}

class Paging : public emf::doubles::PlatformTest {
 protected:
  static std::vector<std::string> sentBodies() {
    std::vector<std::string> bodies;
    for (const RestReq& sent : platform().rest.requests()) bodies.push_back(compact(sent.body));
    return bodies;
  }
  static std::vector<std::string> sentParams() {
    std::vector<std::string> params;
    for (const RestReq& sent : platform().rest.requests()) params.push_back(compact(sent.params));
    return params;
  }
  static void answers(const char* text) { platform().rest.answers(kUrl, json(text)); }

  Json::Value page_ = "left over";
};

using MarkerPaging = Paging;

TEST_F(MarkerPaging, StartsAtTheFirstPageOfTwoHundred) {
  const MarkerPaginator pages(request(2));
  EXPECT_EQ(pages.request.url, kUrl);
  EXPECT_EQ(compact(pages.request.body), R"({"query-text":"all"})");
  EXPECT_EQ(pages.marker, "");
  EXPECT_EQ(pages.listKey, "objList");
  EXPECT_EQ(pages.limit, 200U);
  EXPECT_TRUE(pages.hasMore);
  EXPECT_THAT(platform().rest.requests(), IsEmpty());
}

TEST_F(MarkerPaging, FirstPageSendsTheLimitAloneAndTheSecondTheMarkerToo) {
  MarkerPaginator pages(request(2));
  answers(R"({"isTruncated":true,"marker":"m1","objList":[1,2]})");
  answers(R"({"isTruncated":true,"marker":"m2","objList":[3]})");
  answers(R"({"isTruncated":false,"marker":"m3","objList":[]})");
  EXPECT_TRUE(pages.NextPage(page_));
  EXPECT_EQ(compact(page_), "[1,2]");
  EXPECT_TRUE(pages.hasMore);
  EXPECT_EQ(pages.marker, "m1");
  EXPECT_TRUE(pages.NextPage(page_));
  EXPECT_EQ(compact(page_), "[3]");
  EXPECT_EQ(pages.marker, "m2");
  EXPECT_TRUE(pages.NextPage(page_));
  EXPECT_EQ(compact(page_), "[]");
  EXPECT_FALSE(pages.hasMore);
  EXPECT_EQ(pages.marker, "");
  EXPECT_THAT(sentBodies(), ElementsAre(R"({"limit":200,"query-text":"all"})",
                                        R"({"limit":200,"marker":"m1","query-text":"all"})",
                                        R"({"limit":200,"marker":"m2","query-text":"all"})"));
  EXPECT_THAT(sentParams(), Each("null"));
}

TEST_F(MarkerPaging, AfterTheLastPageNothingIsAsked) {
  MarkerPaginator pages(request(2));
  answers(R"({"isTruncated":false,"objList":[1]})");
  EXPECT_TRUE(pages.NextPage(page_));
  EXPECT_FALSE(pages.NextPage(page_));
  EXPECT_EQ(compact(page_), "[1]");
  EXPECT_EQ(platform().rest.requests().size(), 1U);
}

TEST_F(MarkerPaging, WithMethodOneThePagingKeysGoIntoTheParameters) {
  MarkerPaginator pages(request(1));
  answers(R"({"isTruncated":true,"marker":"m1","objList":[]})");
  answers(R"({"isTruncated":false,"objList":[]})");
  EXPECT_TRUE(pages.NextPage(page_));
  EXPECT_TRUE(pages.NextPage(page_));
  EXPECT_THAT(sentParams(), ElementsAre(R"({"limit":200,"query-text":"all"})",
                                        R"({"limit":200,"marker":"m1","query-text":"all"})"));
  EXPECT_THAT(sentBodies(), Each("null"));
}

TEST_F(MarkerPaging, AnyMethodButTwoUsesTheParameters) {
  for (const std::uint32_t method : {0U, 3U, 99U}) {
    platform().reset();
    MarkerPaginator pages(request(method));
    answers(R"({"objList":[]})");
    EXPECT_TRUE(pages.NextPage(page_));
    EXPECT_THAT(sentParams(), ElementsAre(R"({"limit":200,"query-text":"all"})")) << method;
    EXPECT_THAT(sentBodies(), ElementsAre("null")) << method;
  }
}

TEST_F(MarkerPaging, NullParameterObjectBecomesOne) {
  MarkerPaginator pages{RestReq()};
  platform().rest.answers("", json(R"({"objList":[]})"));
  EXPECT_TRUE(pages.NextPage(page_));
  EXPECT_THAT(sentParams(), ElementsAre(R"({"limit":200})"));
}

TEST_F(MarkerPaging, ListKeyAndLimitMayBeReplaced) {
  MarkerPaginator pages(request(2));
  pages.listKey = "dataList";
  pages.limit = 4294967295U;
  answers(R"({"objList":["wrong"],"dataList":["right"]})");
  EXPECT_TRUE(pages.NextPage(page_));
  EXPECT_EQ(compact(page_), R"(["right"])");
  EXPECT_THAT(sentBodies(), ElementsAre(R"({"limit":4294967295,"query-text":"all"})"));
  EXPECT_TRUE(platform().rest.requests()[0].body["limit"].isUInt());
}

TEST_F(MarkerPaging, EverythingElseOfTheRequestStaysAsItWas) {
  MarkerPaginator pages(request(2));
  answers(R"({"isTruncated":true,"marker":"m1","objList":[]})");
  answers(R"({"objList":[]})");
  pages.NextPage(page_);
  pages.NextPage(page_);
  for (const RestReq& sent : platform().rest.requests()) {
    EXPECT_EQ(sent.target, "target");
    EXPECT_EQ(sent.url, kUrl);
    EXPECT_EQ(sent.method, 2U);
    EXPECT_EQ(sent.mode, 4);
    EXPECT_EQ(sent.option, 77U);
    EXPECT_EQ(compact(sent.extra), R"({"extra":1})");
  }
}

TEST_F(MarkerPaging, RequestGivenIsNotChanged) {
  const RestReq given = request(2);
  MarkerPaginator pages(given);
  answers(R"({"objList":[]})");
  pages.NextPage(page_);
  EXPECT_EQ(compact(given.body), R"({"query-text":"all"})");
}

TEST_F(MarkerPaging, EachExchangeStartsFromANullResponse) {
  MarkerPaginator pages(request(2));
  answers(R"({"isTruncated":true,"marker":"m1","objList":[]})");
  answers(R"({"objList":[]})");
  pages.NextPage(page_);
  pages.NextPage(page_);
  EXPECT_THAT(platform().rest.responsesBefore(), ElementsAre(Json::Value(), Json::Value()));
}

TEST_F(MarkerPaging, MoreWithoutAMarkerFetchesTheFirstPageAgain) {
  MarkerPaginator pages(request(2));
  answers(R"({"isTruncated":true,"objList":[1]})");
  answers(R"({"isTruncated":false,"objList":[1]})");
  EXPECT_TRUE(pages.NextPage(page_));
  EXPECT_TRUE(pages.hasMore);
  EXPECT_EQ(pages.marker, "");
  EXPECT_TRUE(pages.NextPage(page_));
  EXPECT_THAT(sentBodies(), Each(R"({"limit":200,"query-text":"all"})"));
}

TEST_F(MarkerPaging, MoreWithoutAMarkerLaterKeepsTheOneThatWasSent) {
  MarkerPaginator pages(request(2));
  answers(R"({"isTruncated":true,"marker":"m1","objList":[]})");
  answers(R"({"isTruncated":true,"objList":[]})");
  answers(R"({"isTruncated":false,"objList":[]})");
  pages.NextPage(page_);
  pages.NextPage(page_);
  EXPECT_EQ(pages.marker, "");
  pages.NextPage(page_);
  EXPECT_THAT(sentBodies(), ElementsAre(R"({"limit":200,"query-text":"all"})",
                                        R"({"limit":200,"marker":"m1","query-text":"all"})",
                                        R"({"limit":200,"marker":"m1","query-text":"all"})"));
}

TEST_F(MarkerPaging, AnswerWithoutTruncationFlagIsTheLast) {
  MarkerPaginator pages(request(2));
  answers(R"({"marker":"m1","objList":[1]})");
  EXPECT_TRUE(pages.NextPage(page_));
  EXPECT_FALSE(pages.hasMore);
  EXPECT_EQ(pages.marker, "");
}

TEST_F(MarkerPaging, AnswerWithoutTheListIsANullPage) {
  MarkerPaginator pages(request(2));
  answers(R"({"isTruncated":false})");
  EXPECT_TRUE(pages.NextPage(page_));
  EXPECT_TRUE(page_.isNull());
  EXPECT_EQ(page_.begin(), page_.end());
}

TEST_F(MarkerPaging, NullAnswerOfASuccessfulExchangeIsANullPage) {
  MarkerPaginator pages(request(2));
  answers("null");
  EXPECT_TRUE(pages.NextPage(page_));
  EXPECT_TRUE(page_.isNull());
  EXPECT_FALSE(pages.hasMore);
}

TEST_F(MarkerPaging, FailedExchangeEndsTheWalk) {
  MarkerPaginator pages(request(2));
  answers(R"({"isTruncated":true,"marker":"m1","objList":[1]})");
  platform().rest.fails(kUrl);
  EXPECT_TRUE(pages.NextPage(page_));
  EXPECT_FALSE(pages.NextPage(page_));
  EXPECT_FALSE(pages.hasMore);
  EXPECT_EQ(pages.marker, "");
  EXPECT_EQ(compact(page_), "[1]");
  EXPECT_FALSE(pages.NextPage(page_));
  EXPECT_EQ(platform().rest.requests().size(), 2U);
  EXPECT_THAT(platform().log.lines(), IsEmpty());
  EXPECT_THAT(platform().trace.lines(), IsEmpty());
}

TEST_F(MarkerPaging, FlagOfAFailedExchangeIsReadBeforeItsResult) {
  MarkerPaginator pages(request(2));
  platform().rest.fails(kUrl, json(R"({"isTruncated":true,"marker":"m9","objList":[1]})"));
  EXPECT_FALSE(pages.NextPage(page_));
  EXPECT_TRUE(pages.hasMore);
  EXPECT_EQ(pages.marker, "m9");
  EXPECT_EQ(page_, "left over");
}

TEST_F(MarkerPaging, AnswerThatIsNoObjectHoldsNoPage) {
  for (const char* answer : {"[]", "[1]", R"("text")", "7", "true"}) {
    platform().reset();
    MarkerPaginator pages(request(2));
    answers(answer);
    EXPECT_FALSE(pages.NextPage(page_)) << answer;
    EXPECT_FALSE(pages.hasMore) << answer;
    EXPECT_EQ(page_, "left over") << answer;
  }
}

TEST_F(MarkerPaging, FlagOfAWrongTypeIsTold) {
  MarkerPaginator pages(request(2));
  answers(R"({"isTruncated":"true","objList":[1]})");
  EXPECT_THROW(pages.NextPage(page_), Json::LogicError);
  EXPECT_EQ(page_, "left over");
}

TEST_F(MarkerPaging, NumbersStandForFlagAndMarker) {
  MarkerPaginator pages(request(2));
  answers(R"({"isTruncated":1,"marker":17,"objList":[]})");
  answers(R"({"isTruncated":0,"objList":[]})");
  EXPECT_TRUE(pages.NextPage(page_));
  EXPECT_TRUE(pages.hasMore);
  EXPECT_EQ(pages.marker, "17");
  EXPECT_TRUE(pages.NextPage(page_));
  EXPECT_TRUE(platform().rest.requests()[1].body["marker"].isString());
}

using QueryIdPaging = Paging;

TEST_F(QueryIdPaging, StartsAtTheFirstPageOfTwoHundred) {
  const QueryIdPaginator pages(request(2));
  EXPECT_EQ(pages.request.url, kUrl);
  EXPECT_TRUE(pages.hasMore);
  EXPECT_EQ(pages.queryId, "");
  EXPECT_EQ(pages.limit, 200U);
  EXPECT_EQ(pages.listKey, "objList");
}

TEST_F(QueryIdPaging, SecondRequestHoldsTheCursorAlone) {
  QueryIdPaginator pages(request(2));
  pages.limit = 1000;
  answers(R"({"queryId":"q1","objList":[1]})");
  answers(R"({"queryId":"q2","objList":[2]})");
  answers(R"({"queryId":"","objList":[3]})");
  EXPECT_TRUE(pages.NextPage(page_));
  EXPECT_EQ(compact(page_), "[1]");
  EXPECT_EQ(pages.queryId, "q1");
  EXPECT_TRUE(pages.NextPage(page_));
  EXPECT_EQ(compact(page_), "[2]");
  EXPECT_TRUE(pages.NextPage(page_));
  EXPECT_EQ(compact(page_), "[3]");
  EXPECT_FALSE(pages.hasMore);
  EXPECT_EQ(pages.queryId, "");
  EXPECT_FALSE(pages.NextPage(page_));
  EXPECT_THAT(sentBodies(), ElementsAre(R"({"limit":1000,"query-text":"all"})",
                                        R"({"query-id":"q1"})", R"({"query-id":"q2"})"));
  EXPECT_THAT(sentParams(), Each("null"));
  EXPECT_TRUE(platform().rest.requests()[0].body["limit"].isUInt());
  EXPECT_TRUE(platform().rest.requests()[1].body["query-id"].isString());
}

TEST_F(QueryIdPaging, WithMethodOneTheParametersCarryTheCursor) {
  QueryIdPaginator pages(request(1));
  pages.listKey = "dataList";
  answers(R"({"queryId":"q1","dataList":[1]})");
  answers(R"({"dataList":[2]})");
  EXPECT_TRUE(pages.NextPage(page_));
  EXPECT_TRUE(pages.NextPage(page_));
  EXPECT_EQ(compact(page_), "[2]");
  EXPECT_THAT(sentParams(),
              ElementsAre(R"({"limit":200,"query-text":"all"})", R"({"query-id":"q1"})"));
  EXPECT_THAT(sentBodies(), Each("null"));
}

TEST_F(QueryIdPaging, AnswerWithoutACursorIsTheLast) {
  QueryIdPaginator pages(request(2));
  answers(R"({"objList":[1]})");
  EXPECT_TRUE(pages.NextPage(page_));
  EXPECT_FALSE(pages.hasMore);
}

TEST_F(QueryIdPaging, FailedExchangeEndsTheWalk) {
  QueryIdPaginator pages(request(2));
  answers(R"({"queryId":"q1","objList":[1]})");
  platform().rest.fails(kUrl);
  EXPECT_TRUE(pages.NextPage(page_));
  EXPECT_FALSE(pages.NextPage(page_));
  EXPECT_FALSE(pages.hasMore);
  EXPECT_EQ(pages.queryId, "");
  EXPECT_EQ(compact(page_), "[1]");
  EXPECT_FALSE(pages.NextPage(page_));
  EXPECT_EQ(platform().rest.requests().size(), 2U);
}

TEST_F(QueryIdPaging, CursorOfAFailedExchangeIsReadBeforeItsResult) {
  QueryIdPaginator pages(request(2));
  platform().rest.fails(kUrl, json(R"({"queryId":"q9","objList":[1]})"));
  EXPECT_FALSE(pages.NextPage(page_));
  EXPECT_TRUE(pages.hasMore);
  EXPECT_EQ(pages.queryId, "q9");
  EXPECT_EQ(page_, "left over");
}

TEST_F(QueryIdPaging, AnswerThatIsNoObjectHoldsNoPage) {
  QueryIdPaginator pages(request(2));
  answers("[1]");
  EXPECT_FALSE(pages.NextPage(page_));
  EXPECT_FALSE(pages.hasMore);
  EXPECT_EQ(page_, "left over");
}

TEST_F(QueryIdPaging, EachExchangeStartsFromANullResponse) {
  QueryIdPaginator pages(request(2));
  answers(R"({"queryId":"q1"})");
  answers(R"({})");
  pages.NextPage(page_);
  pages.NextPage(page_);
  EXPECT_THAT(platform().rest.responsesBefore(), ElementsAre(Json::Value(), Json::Value()));
  EXPECT_TRUE(page_.isNull());
}

}  // namespace
}  // namespace emf::test
