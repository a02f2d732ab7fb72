// One page of the topology view: what is asked and what comes back.
#include <gtest/gtest.h>

#include "http_service.h"
#include "orma/rest/nbi_http_proxy.h"
#include "rest_fixture.h"

using NS_UTIL::NBIHTTPProxy;

class TopoSubnetView : public RestTest {
 protected:
  TopoSubnetView() { filter_["logOp"] = "and"; }

  Json::Value filter_;
  Json::Value response_ = "old";
};

TEST_F(TopoSubnetView, FirstPageIsAskedForWithoutAMarker) {
  HttpService service(always(R"({"dataList":[{"objId":"1"}],"hasNext":false,"marker":""})"));
  configureBaseUrl(service.url());
  ASSERT_TRUE(NBIHTTPProxy::getTopoSubnetViewInfo(filter_, "", response_));
  EXPECT_EQ(response_, json(R"({"dataList":[{"objId":"1"}],"hasNext":false,"marker":""})"));
  EXPECT_EQ(service.request().method, "POST");
  EXPECT_EQ(service.request().target, "/rest/topology/v3/subnet-view");
  EXPECT_EQ(json(service.request().body),
            json(R"({"condition":{"filter":{"logOp":"and"}},"limit":1000})"));
}

TEST_F(TopoSubnetView, LaterPageIsNamedByItsMarker) {
  HttpService service(always("{}"));
  configureBaseUrl(service.url());
  ASSERT_TRUE(NBIHTTPProxy::getTopoSubnetViewInfo(filter_, "m1", response_));
  EXPECT_EQ(json(service.request().body),
            json(R"({"condition":{"filter":{"logOp":"and"}},"limit":1000,"marker":"m1"})"));
}

TEST_F(TopoSubnetView, FailureLeavesNull) {
  HttpService service(always("{}", 500));
  configureBaseUrl(service.url());
  EXPECT_FALSE(NBIHTTPProxy::getTopoSubnetViewInfo(filter_, "", response_));
  EXPECT_TRUE(response_.isNull());
}
