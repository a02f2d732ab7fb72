// The device listing: every page or nothing.
#include <gmock/gmock.h>

#include "http_service.h"
#include "orma/rest/nbi_http_proxy.h"
#include "rest_fixture.h"

using NS_UTIL::NBIHTTPProxy;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

class DeviceListing : public RestTest {
 protected:
  // Answers the n-th request with the n-th page, and with the last page from then on.
  void serve(std::vector<std::string> pages, Json::Value rest = Json::Value()) {
    pages_ = std::move(pages);
    service_ = std::make_unique<HttpService>(
        [this, next = std::size_t{0}](const httplib::Request&,
                                      httplib::Response& response) mutable {
          response.set_content(pages_[std::min(next++, pages_.size() - 1)], "application/json");
        });
    rest["baseUrl"] = service_->url();
    configure(rest);
  }
  std::vector<std::string> targets() const {
    std::vector<std::string> all;
    for (const auto& request : service_->requests()) all.push_back(request.target);
    return all;
  }
  std::vector<std::string> nativeIds() const {
    std::vector<std::string> ids;
    for (const auto& device : out_) ids.push_back(device["nativeId"].asString());
    return ids;
  }
  // The trace of a listing that must fail; what `out_` held before stays.
  std::string failure() {
    out_ = {json(R"({"nativeId":"old"})")};
    EXPECT_FALSE(NBIHTTPProxy::GetAllDevProperty(out_));
    EXPECT_THAT(nativeIds(), ElementsAre("old"));
    return failureTrace();
  }

  std::vector<std::string> pages_;
  std::unique_ptr<HttpService> service_;
  std::vector<Json::Value> out_;
};

TEST_F(DeviceListing, PagesFollowTheMarker) {
  serve(
      {R"({"objList":[{"nativeId":"OS=1"},{"nativeId":"NE=2"}],"isTruncated":true,"marker":"a b"})",
       R"({"objList":[],"isTruncated":true,"marker":"c"})",
       R"({"objList":[{"nativeId":"NE=3"}],"isTruncated":false,"marker":"unused"})"});
  EXPECT_TRUE(NBIHTTPProxy::GetAllDevProperty(out_));
  EXPECT_THAT(nativeIds(), ElementsAre("OS=1", "NE=2", "NE=3"));
  EXPECT_THAT(targets(), ElementsAre("/rest/resource/v2/dev-properties?limit=1000",
                                     "/rest/resource/v2/dev-properties?limit=1000&marker=a%20b",
                                     "/rest/resource/v2/dev-properties?limit=1000&marker=c"));
}

TEST_F(DeviceListing, LastOfTwoMarkersCounts) {
  serve({R"({"marker":"a","objList":[],"isTruncated":true,"marker":"b"})", R"({"objList":[]})"});
  EXPECT_TRUE(NBIHTTPProxy::GetAllDevProperty(out_));
  EXPECT_THAT(targets(), ElementsAre("/rest/resource/v2/dev-properties?limit=1000",
                                     "/rest/resource/v2/dev-properties?limit=1000&marker=b"));
}

TEST_F(DeviceListing, PagesWithInvalidUtf8ArePagesToo) {
  serve({"{\"objList\":[{\"nativeId\":\"NE=\xff\"}],\"isTruncated\":true,\"marker\":\"\xfe\"}",
         R"({"objList":[{"nativeId":"NE=3"}]})"});
  EXPECT_TRUE(NBIHTTPProxy::GetAllDevProperty(out_));
  EXPECT_THAT(nativeIds(), ElementsAre("NE=\xff", "NE=3"));
  EXPECT_EQ(targets().at(1), "/rest/resource/v2/dev-properties?limit=1000&marker=%FE");
  EXPECT_EQ(traces().size(), 1u);
}

TEST_F(DeviceListing, PageSizeComesFromTheConfiguration) {
  Json::Value rest;
  rest["devicePageSize"] = 5;
  serve({R"({"objList":[]})"}, rest);
  EXPECT_TRUE(NBIHTTPProxy::GetAllDevProperty(out_));
  EXPECT_THAT(targets(), ElementsAre("/rest/resource/v2/dev-properties?limit=5"));
}

TEST_F(DeviceListing, ObjectsComeWholeAndAreAppended) {
  const std::string device =
      R"({"nativeId":"NE=2","typeId":131077,"ipAddress":"10.0.0.2","name":"网元","more":[1]})";
  serve({R"({"objList":[)" + device + R"(],"isTruncated":false})"});
  out_.push_back(json(R"({"nativeId":"old"})"));
  EXPECT_TRUE(NBIHTTPProxy::GetAllDevProperty(out_));
  EXPECT_THAT(out_, ElementsAre(json(R"({"nativeId":"old"})"), json(device)));
}

TEST_F(DeviceListing, EmptyListIsASuccess) {
  serve({R"({"objList":[],"isTruncated":false})"});
  EXPECT_TRUE(NBIHTTPProxy::GetAllDevProperty(out_));
  EXPECT_TRUE(out_.empty());
  EXPECT_TRUE(traces().empty());
}

TEST_F(DeviceListing, MissingOrNullIsTruncatedMeansTheLastPage) {
  for (const char* page : {R"({"objList":[{"nativeId":"NE=2"}],"marker":"x"})",
                           R"({"objList":[{"nativeId":"NE=2"}],"isTruncated":null})"}) {
    serve({page});
    out_.clear();
    EXPECT_TRUE(NBIHTTPProxy::GetAllDevProperty(out_));
    EXPECT_THAT(nativeIds(), ElementsAre("NE=2"));
  }
}

TEST_F(DeviceListing, ElementsThatAreNoObjectsAreLeftOutAndTold) {
  serve({R"({"objList":[1,{"nativeId":"NE=2"},null,"text",[{}]]})"});
  EXPECT_TRUE(NBIHTTPProxy::GetAllDevProperty(out_));
  EXPECT_THAT(nativeIds(), ElementsAre("NE=2"));
  const auto told = traces();
  ASSERT_EQ(told.size(), 1u);
  EXPECT_EQ(told[0].level, "info");
  EXPECT_EQ(told[0].text, "Device listing: 4 elements are no objects and were left out");
}

TEST_F(DeviceListing, WrongTypesInDevicesAreTheCallersConcern) {
  serve({R"({"objList":[{"nativeId":5,"typeId":"x"}]})"});
  EXPECT_TRUE(NBIHTTPProxy::GetAllDevProperty(out_));
  EXPECT_THAT(out_, ElementsAre(json(R"({"nativeId":5,"typeId":"x"})")));
}

struct BadPage {
  const char* name;
  const char* page;
  const char* reason;
};

class BadDevicePage : public DeviceListing, public ::testing::WithParamInterface<BadPage> {};

TEST_P(BadDevicePage, FailsTheWholeListing) {
  const auto row = GetParam();
  serve({R"({"objList":[{"nativeId":"NE=2"}],"isTruncated":true,"marker":"m"})", row.page});
  EXPECT_EQ(failure(), "Device listing " + service_->url() +
                           "/rest/resource/v2/dev-properties failed at page 2: " + row.reason +
                           "; check that rest.baseUrl names the right service in a matching "
                           "release");
}

constexpr const char* kNoMarker = "more pages are announced and \"marker\" is no text or empty";

INSTANTIATE_TEST_SUITE_P(
    Table, BadDevicePage,
    ::testing::Values(
        BadPage{"NoObject", "[]", "it is no object"}, BadPage{"Null", "null", "it is no object"},
        BadPage{"NoList", "{}", "it has no array \"objList\""},
        BadPage{"ListIsObject", R"({"objList":{}})", "it has no array \"objList\""},
        BadPage{"ListIsNull", R"({"objList":null})", "it has no array \"objList\""},
        BadPage{"TruncatedIsText", R"({"objList":[],"isTruncated":"true","marker":"n"})",
                "\"isTruncated\" is no boolean"},
        BadPage{"NoMarker", R"({"objList":[],"isTruncated":true})", kNoMarker},
        BadPage{"MarkerEmpty", R"({"objList":[],"isTruncated":true,"marker":""})", kNoMarker},
        BadPage{"MarkerIsNumber", R"({"objList":[],"isTruncated":true,"marker":7})", kNoMarker},
        BadPage{"MarkerRepeats", R"({"objList":[],"isTruncated":true,"marker":"m"})",
                "its \"marker\" came before, the pages would never end"}),
    [](const auto& instance) { return instance.param.name; });

TEST_F(DeviceListing, MarkersThatGoInACircleFail) {
  const std::string page = R"({"objList":[{"nativeId":"NE=2"}],"isTruncated":true,"marker":")";
  serve({page + "a\"}", page + "b\"}", page + "c\"}", page + "a\"}"});
  EXPECT_THAT(failure(), HasSubstr("failed at page 4: its \"marker\" came before"));
}

TEST_F(DeviceListing, MorePagesThanTheLimitFail) {
  Json::Value rest;
  rest["maxPages"] = 2;
  const std::string page = R"({"objList":[{"nativeId":"NE=2"}],"isTruncated":true,"marker":")";
  serve({page + "a\"}", page + "b\"}", page + "c\"}"}, rest);
  EXPECT_THAT(failure(), HasSubstr("there are more than 2 pages (rest.maxPages)"));
  EXPECT_EQ(targets().size(), 2u);
  serve({page + "a\"}", R"({"objList":[]})"}, rest);
  out_.clear();
  EXPECT_TRUE(NBIHTTPProxy::GetAllDevProperty(out_));
}

TEST_F(DeviceListing, PageThatIsNestedTooDeeplyFailsWithTheNextOneOnItsWay) {
  Json::Value rest;
  rest["maxNesting"] = 3;
  serve({R"({"objList":[{"a":[]}],"isTruncated":true,"marker":"m"})", R"({"objList":[]})"}, rest);
  EXPECT_THAT(failure(), HasSubstr("nested deeper than 3 levels"));
}

TEST_F(DeviceListing, FailedExchangeIsTracedOnce) {
  serve({R"({"objList":[{"nativeId":"NE=2"}],"isTruncated":true,"marker":"m"})", "no json"});
  EXPECT_THAT(failure(), HasSubstr("/rest/resource/v2/dev-properties failed: the answer"));
}
