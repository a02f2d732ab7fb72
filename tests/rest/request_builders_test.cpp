#include <type_traits>

#include "platform_test.h"
#include "restquery.h"

namespace emf::test {
namespace {

using emf::doubles::compact;
using emf::doubles::json;
using emf::doubles::platform;
using Nimbola::LogOp;
using Nimbola::ResourceV3InstancesObjectsQuery;
using Nimbola::RestReq;
using Nimbola::SimpleConditions;
using Nimbola::SimpleExp;
using Nimbola::TsNodesQuery;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr char kElements[] = "/rest/resource/v3/instances/objects/FixedNetworkElement";
constexpr auto kAnd = LogOp{0};
constexpr auto kOr = LogOp{1};
constexpr auto kAnyOtherValue = LogOp{-7};

static_assert(sizeof(LogOp) == 4 && sizeof(Nimbola::OperatorType) == 4);
static_assert(sizeof(Nimbola::MainType) == 4);
static_assert(Nimbola::MAIN_TYPE_NETWORK_ELEMENT == 1);
static_assert(Nimbola::OPERATOR_EQUAL == 0 && Nimbola::OPERATOR_IN == 4);
static_assert(std::is_copy_constructible_v<RestReq> && std::is_copy_assignable_v<RestReq>);
static_assert(std::is_copy_constructible_v<ResourceV3InstancesObjectsQuery>);
static_assert(std::is_copy_constructible_v<TsNodesQuery>);

// What no builder touches is as MakeRestReq gave it.
void expectMadeFields(const RestReq& request) {
  EXPECT_EQ(request.target, "made-target");
  EXPECT_EQ(compact(request.extra), R"({"made":true})");
  EXPECT_EQ(request.option, (std::uint64_t{1} << 63) + 7);
}

class ResourceQuery : public emf::doubles::PlatformTest {
 protected:
  static std::string bodyOf(const ResourceV3InstancesObjectsQuery& query) {
    return compact(query.ToRestReq(kElements).body);
  }
  const SimpleExp native_ = {"nativeId", "NE=12", Nimbola::OPERATOR_EQUAL, true};
  const SimpleExp type_ = {"typeId", json(R"(["1","2"])"), Nimbola::OPERATOR_IN, false};
};

TEST_F(ResourceQuery, StartsEmptyAndCombinesByOr) {
  const ResourceV3InstancesObjectsQuery query;
  EXPECT_THAT(query.contentSelector, IsEmpty());
  EXPECT_EQ(query.logOp, 1);
  EXPECT_THAT(query.simple, IsEmpty());
  EXPECT_EQ(query.complexLogOp, 1);
  EXPECT_THAT(query.complex, IsEmpty());
}

TEST_F(ResourceQuery, RequestPostsInModeFourAndKeepsWhatWasMade) {
  const RestReq request = ResourceV3InstancesObjectsQuery().ToRestReq(kElements);
  EXPECT_EQ(request.url, kElements);
  EXPECT_EQ(request.method, 2U);
  EXPECT_EQ(request.mode, 4);
  EXPECT_TRUE(request.params.isNull());
  expectMadeFields(request);
}

TEST_F(ResourceQuery, EmptyBuilderHandsOverANullDocument) {
  const RestReq request = ResourceV3InstancesObjectsQuery().ToRestReq(kElements);
  EXPECT_TRUE(request.body.isNull());
  EXPECT_THAT(platform().rest.documents(), ElementsAre(Json::Value()));
}

TEST_F(ResourceQuery, BodyIsWhatBecomesOfTheDocument) {
  platform().rest.postDataBecomes([](const Json::Value& document) {
    Json::Value wrapped;
    wrapped["wrapped"] = document;
    return wrapped;
  });
  ResourceV3InstancesObjectsQuery query;
  query.contentSelector = {"name"};
  EXPECT_EQ(bodyOf(query), R"({"wrapped":{"content-selector":["name"]}})");
}

TEST_F(ResourceQuery, SelectorAloneWritesNoCondition) {
  ResourceV3InstancesObjectsQuery query;
  query.contentSelector = {"name", "ipAddress", "name"};
  EXPECT_EQ(bodyOf(query), R"({"content-selector":["name","ipAddress","name"]})");
}

TEST_F(ResourceQuery, SimpleFilterHoldsEveryExpressionInOrder) {
  ResourceV3InstancesObjectsQuery query;
  query.simple = {native_, type_};
  query.contentSelector = {"name"};
  EXPECT_EQ(
      bodyOf(query),
      R"({"condition":{"filter":{"logOp":"or","simple":[)"
      R"({"caseSensitive":true,"name":"nativeId","operator":"operator0","value":"NE=12"},)"
      R"({"caseSensitive":false,"name":"typeId","operator":"operator4","value":["1","2"]}]}},)"
      R"("content-selector":["name"]})");
}

TEST_F(ResourceQuery, SimpleFilterWritesItsOperatorAlways) {
  const std::pair<LogOp, const char*> kWords[] = {
      {kAnd, "and"}, {kOr, "or"}, {LogOp{2}, "or"}, {kAnyOtherValue, "or"}};
  for (const auto& [op, word] : kWords) {
    ResourceV3InstancesObjectsQuery query;
    query.simple = {native_};
    query.logOp = op;
    query.complexLogOp = op == kAnd ? kOr : kAnd;
    EXPECT_EQ(query.ToRestReq(kElements).body["condition"]["filter"]["logOp"], word) << op;
  }
}

TEST_F(ResourceQuery, SimpleFilterTakesPrecedenceOverTheComplexOne) {
  ResourceV3InstancesObjectsQuery query;
  query.simple = {native_};
  query.complex = {{kAnd, {type_, type_}}};
  EXPECT_EQ(
      bodyOf(query),
      R"({"condition":{"filter":{"logOp":"or","simple":[)"
      R"({"caseSensitive":true,"name":"nativeId","operator":"operator0","value":"NE=12"}]}}})");
}

TEST_F(ResourceQuery, GroupOfOneHasNoOperatorAndGroupOfTwoHasOne) {
  ResourceV3InstancesObjectsQuery query;
  query.complex = {{kAnd, {native_}}, {kAnd, {native_, native_}}, {kAnyOtherValue, {type_, type_}}};
  const std::string native =
      R"({"caseSensitive":true,"name":"nativeId","operator":"operator0","value":"NE=12"})";
  const std::string type =
      R"({"caseSensitive":false,"name":"typeId","operator":"operator4","value":["1","2"]})";
  EXPECT_EQ(bodyOf(query), R"({"condition":{"filter":{"complex":[{"simple":[)" + native +
                               R"(]},{"logOp":"and","simple":[)" + native + "," + native +
                               R"(]},{"logOp":"or","simple":[)" + type + "," + type +
                               R"(]}],"logOp":"or"}}})");
}

TEST_F(ResourceQuery, ComplexFilterWritesItsOwnOperatorAlways) {
  const std::pair<LogOp, const char*> kWords[] = {
      {kAnd, "and"}, {kOr, "or"}, {kAnyOtherValue, "or"}};
  for (const auto& [op, word] : kWords) {
    ResourceV3InstancesObjectsQuery query;
    query.complex = {{kAnd, {native_}}};
    query.complexLogOp = op;
    query.logOp = op == kAnd ? kOr : kAnd;
    EXPECT_EQ(query.ToRestReq(kElements).body["condition"]["filter"]["logOp"], word) << op;
  }
}

TEST_F(ResourceQuery, GroupWithoutExpressionsIsWrittenAsItIs) {
  ResourceV3InstancesObjectsQuery query;
  query.complex = {{}};
  EXPECT_EQ(bodyOf(query), R"({"condition":{"filter":{"complex":[{"simple":[]}],"logOp":"or"}}})");
}

TEST_F(ResourceQuery, CaseSensitivityIsAJsonBoolean) {
  ResourceV3InstancesObjectsQuery query;
  query.simple = {SimpleExp{"name", "x"}};
  const Json::Value written =
      query.ToRestReq(kElements).body["condition"]["filter"]["simple"][0]["caseSensitive"];
  EXPECT_TRUE(written.isBool());
  EXPECT_TRUE(written.asBool());
}

TEST_F(ResourceQuery, BuildingLeavesTheBuilderAsItWas) {
  ResourceV3InstancesObjectsQuery query;
  query.simple = {native_};
  const std::string first = bodyOf(query);
  EXPECT_EQ(bodyOf(query), first);
  EXPECT_THAT(platform().rest.requests(), IsEmpty());  // no I/O
}

TEST(SimpleConditionsTest, EachElementIsCombinedByAndInTheOrderOfTheList) {
  const SimpleConditions conditions = {{"a", "1"}, {"b", "2", Nimbola::OPERATOR_IN, false}};
  ASSERT_EQ(conditions.size(), 2U);
  EXPECT_EQ(conditions[0].logOp, 0);
  EXPECT_EQ(conditions[0].exp.name, "a");
  EXPECT_EQ(conditions[0].exp.value, "1");
  EXPECT_EQ(conditions[0].exp.op, Nimbola::OPERATOR_EQUAL);
  EXPECT_TRUE(conditions[0].exp.caseSensitive);
  EXPECT_EQ(conditions[1].logOp, 0);
  EXPECT_EQ(conditions[1].exp.name, "b");
  EXPECT_EQ(conditions[1].exp.op, Nimbola::OPERATOR_IN);
  EXPECT_FALSE(conditions[1].exp.caseSensitive);
}

class NodesQuery : public emf::doubles::PlatformTest {
 protected:
  static std::string paramsOf(const TsNodesQuery& query) {
    return compact(query.ToRestReq().params);
  }
};

TEST_F(NodesQuery, RequestCarriesParametersAndKeepsWhatWasMade) {
  const RestReq request = TsNodesQuery().ToRestReq();
  EXPECT_EQ(request.url, "/rest/topology/v3/tsnodes");
  EXPECT_EQ(request.method, 1U);
  EXPECT_EQ(request.mode, 8);  // as made
  EXPECT_TRUE(request.body.isNull());
  expectMadeFields(request);
}

TEST_F(NodesQuery, EmptyBuilderHandsOverANullDocument) {
  EXPECT_TRUE(TsNodesQuery().ToRestReq().params.isNull());
  EXPECT_THAT(platform().rest.documents(), ElementsAre(Json::Value()));
}

TEST_F(NodesQuery, ParametersAreWhatBecomesOfTheDocument) {
  platform().rest.postDataBecomes([](const Json::Value&) { return Json::Value("text"); });
  EXPECT_EQ(paramsOf(TsNodesQuery()), R"("text")");
}

TEST_F(NodesQuery, EachConditionHoldsOneExpressionAndItsOperatorAlways) {
  TsNodesQuery query;
  query.conditions = SimpleConditions{
      {"nodeClass", "subnet"}, {"parentId", json(R"(["102"])"), Nimbola::OPERATOR_IN, false}};
  query.conditions[1].logOp = kAnyOtherValue;
  EXPECT_EQ(paramsOf(query),
            R"({"conditions":[{"logOp":"and","simple":{"caseSensitive":true,"name":"nodeClass",)"
            R"("operator":"operator0","value":"subnet"}},{"logOp":"or","simple":)"
            R"({"caseSensitive":false,"name":"parentId","operator":"operator4",)"
            R"("value":["102"]}}]})");
}

TEST_F(NodesQuery, SelectorKeyIsNotTheResourceQuerys) {
  TsNodesQuery query;
  query.contentSelector = {"objId", "label"};
  EXPECT_EQ(paramsOf(query), R"({"contentSelector":["objId","label"]})");
}

TEST_F(NodesQuery, ConditionsAndSelectorStandSideBySide) {
  TsNodesQuery query;
  query.conditions = SimpleConditions{{"nodeClass", "subnet"}};
  query.contentSelector = {"objId"};
  EXPECT_EQ(paramsOf(query),
            R"({"conditions":[{"logOp":"and","simple":{"caseSensitive":true,"name":"nodeClass",)"
            R"("operator":"operator0","value":"subnet"}}],"contentSelector":["objId"]})");
}

}  // namespace
}  // namespace emf::test
