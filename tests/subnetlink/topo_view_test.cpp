#include "submap_fixture.h"

namespace emf::test {
namespace {

using emf::doubles::compact;
using emf::doubles::json;
using emf::doubles::platform;
using ::testing::_;
using ::testing::ElementsAre;
using ::testing::FieldsAre;
using ::testing::Gt;
using ::testing::IsEmpty;

constexpr char kFailure[] = "[_NS_UTIL::NBIHTTPPROXY::getTopoSubnetViewInfo] failed!";

class TopoView : public SubmapTest {
 protected:
  static std::vector<std::string> query(const Json::Value& filter = Json::Value()) {
    std::vector<Json::Value> objects;
    buffer().QueryTopoView(filter, objects);
    std::vector<std::string> texts;
    for (const Json::Value& object : objects) texts.push_back(compact(object));
    return texts;
  }

  static std::vector<std::string> markers() {
    std::vector<std::string> markers;
    for (const auto& query : platform().rest.topoViewQueries()) markers.push_back(query.marker);
    return markers;
  }
};

TEST_F(TopoView, OnePage) {
  platform().rest.topoViewAnswers(json(R"({"dataList":[{"a":1},2],"hasNext":false})"));
  EXPECT_THAT(query(json(R"({"logOp":"and"})")), ElementsAre(R"({"a":1})", "2"));
  EXPECT_THAT(markers(), ElementsAre(""));
  EXPECT_EQ(compact(platform().rest.topoViewQueries().at(0).filter), R"({"logOp":"and"})");
  EXPECT_THAT(platform().log.lines(), IsEmpty());
}

TEST_F(TopoView, PagesFollowTheMarker) {
  platform().rest.topoViewAnswers(json(R"({"dataList":[1],"hasNext":true,"marker":"m1"})"));
  platform().rest.topoViewAnswers(json(R"({"dataList":[2],"hasNext":true,"marker":7})"));
  platform().rest.topoViewAnswers(json(R"({"dataList":[3],"hasNext":false,"marker":"m3"})"));
  EXPECT_THAT(query(json(R"({"logOp":"or"})")), ElementsAre("1", "2", "3"));
  EXPECT_THAT(markers(), ElementsAre("", "m1", "7"));
  for (const auto& query : platform().rest.topoViewQueries()) {
    EXPECT_EQ(compact(query.filter), R"({"logOp":"or"})");
    EXPECT_TRUE(query.responseBefore.isNull());
  }
}

TEST_F(TopoView, ObjectsAreAppended) {
  platform().rest.topoViewAnswers(json(R"({"dataList":[2]})"));
  std::vector<Json::Value> objects = {Json::Value(1)};
  buffer().QueryTopoView(Json::Value(), objects);
  EXPECT_THAT(objects, ElementsAre(Json::Value(1), Json::Value(2)));
}

TEST_F(TopoView, OnlyTheBooleanTrueAndAMarkerLeadOn) {
  for (const char* end :
       {R"("hasNext":true,"marker":"")", R"("hasNext":true)", R"("hasNext":"true","marker":"m")",
        R"("hasNext":1,"marker":"m")", R"("hasNext":null,"marker":"m")", R"("marker":"m")",
        R"("hasNext":true,"marker":null)", R"("hasNext":true,"marker":["m"])",
        R"("hasNext":true,"marker":{})"}) {
    platform().reset();
    platform().rest.topoViewAnswers(json(R"({"dataList":[1],)" + std::string(end) + "}"));
    EXPECT_THAT(query(), ElementsAre("1")) << end;
    EXPECT_THAT(markers(), ElementsAre("")) << end;
  }
}

TEST_F(TopoView, ListThatIsNoArrayGivesNothing) {
  for (const char* list : {"null", "5", R"("text")", R"({"a":1})"}) {
    platform().reset();
    platform().rest.topoViewAnswers(json(R"({"dataList":)" + std::string(list) + "}"));
    EXPECT_THAT(query(), IsEmpty()) << list;
  }
  platform().rest.topoViewAnswers(json("{}"));
  EXPECT_THAT(query(), IsEmpty());
}

TEST_F(TopoView, AnswerThatIsNoObjectGivesNothing) {
  for (const char* answer : {"[1]", "5", R"("text")", "true", "null"}) {
    platform().reset();
    platform().rest.topoViewAnswers(json(answer));
    EXPECT_THAT(query(), IsEmpty()) << answer;
    EXPECT_THAT(markers(), ElementsAre("")) << answer;
  }
}

TEST_F(TopoView, PageWithoutAListLeadsOnAllTheSame) {
  platform().rest.topoViewAnswers(json(R"({"hasNext":true,"marker":"m1"})"));
  platform().rest.topoViewAnswers(json(R"({"dataList":[2]})"));
  EXPECT_THAT(query(), ElementsAre("2"));
}

TEST_F(TopoView, FailedExchangeIsLoggedAndGivesNothing) {
  platform().rest.topoViewFails();
  EXPECT_THAT(query(), IsEmpty());
  EXPECT_THAT(markers(), ElementsAre(""));
  EXPECT_THAT(platform().log.lines(),
              ElementsAre(FieldsAre("ii_domain_bundle/ii_domain_model/debug", "LogFormat",
                                    "submapbufmgr", "unknown", Gt(0), 3, kFailure)));
  EXPECT_THAT(platform().trace.lines(), IsEmpty());
}

TEST_F(TopoView, FailureOnALaterPageKeepsTheEarlierOnes) {
  platform().rest.topoViewAnswers(json(R"({"dataList":[1],"hasNext":true,"marker":"m1"})"));
  platform().rest.topoViewFails();
  EXPECT_THAT(query(), ElementsAre("1"));
  EXPECT_THAT(markers(), ElementsAre("", "m1"));
  EXPECT_THAT(platform().log.texts(), ElementsAre(kFailure));
}

TEST_F(TopoView, WithoutALogServiceTheFailureIsSilent) {
  platform().log.throwing();
  platform().rest.topoViewFails();
  EXPECT_THAT(query(), IsEmpty());
}

}  // namespace
}  // namespace emf::test
