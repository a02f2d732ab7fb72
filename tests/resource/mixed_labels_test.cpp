#include <json/value.h>

#include <map>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "emfresinterface.h"
#include "label_scripts.h"
#include "platform_test.h"
#include "resource_records.h"

namespace emf::test {
namespace {

using emf::doubles::json;
using emf::doubles::platform;
using emf::doubles::ResourceQuery;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::FieldsAre;
using ::testing::Gt;
using ::testing::IsEmpty;
using ::testing::SizeIs;

using DnMap = std::map<int, std::string>;

static_assert(
    std::is_same_v<decltype(EMFResMgrI::getResourceLabels), std::int64_t(Records&, const DnMap&)>);
static_assert(std::is_same_v<decltype(EMFResMgrI::getResourceLabelsEx),
                             decltype(EMFResMgrI::getResourceLabels)>);

class MixedLabels : public emf::doubles::PlatformTest {};

TEST_F(MixedLabels, NamesAreSortedByTheFirstTextFound) {
  echoNames();
  const DnMap dns = {{0, "NE=1"},
                     {1, "NE=1,FR=1"},
                     {2, "NE=1,FR=1,S=2"},
                     {3, "NE=1,S=2,CP=1"},
                     {4, "NE=1,SS=2,CP=1"},
                     {5, "NE=1,SC=2,SS=1"},
                     {6, "NE=1,CP=1,PP=3"},
                     {7, "NE=1,SC=1,LP=3"},
                     {8, "PP=3"},
                     {9, ""},
                     {10, "NE=1,S=1,SS=1,X=1"},
                     {11, "NE=1,FR=1,PP=2,SC=1"}};
  Records out = {ResourceDn{"before", 0, "", {}}};
  EXPECT_EQ(EMFResMgrI::getResourceLabels(out, dns), 0);
  using Rows = std::vector<std::pair<std::string, Fdns>>;
  Rows asked;
  for (const auto& query : platform().resources.queries()) {
    asked.emplace_back(query.operation, query.fdns);
  }
  EXPECT_EQ(asked, (Rows{{"GetPortResourcePropertyByFDNs",
                          {"NE=1,CP=1,PP=3", "NE=1,SC=1,LP=3", "NE=1,FR=1,PP=2,SC=1"}},
                         {"GetCardResourcePropertyByFDNs", {"NE=1,S=2,CP=1", "NE=1,SC=2,SS=1"}},
                         {"GetSlotResourcePropertyByFDNs",
                          {"NE=1,FR=1,S=2", "NE=1,SS=2,CP=1", "NE=1,S=1,SS=1,X=1"}},
                         {"GetFrameResourcePropertyByFDNs", {"NE=1,FR=1"}},
                         {"GetNEResourcePropertyByFDNs", {"NE=1", "PP=3", ""}}}));
  EXPECT_EQ(namesOf(out),
            (Fdns{"before", "NE=1,CP=1,PP=3", "NE=1,SC=1,LP=3", "NE=1,FR=1,PP=2,SC=1",
                  "NE=1,S=2,CP=1", "NE=1,SC=2,SS=1", "NE=1,FR=1,S=2", "NE=1,SS=2,CP=1",
                  "NE=1,S=1,SS=1,X=1", "NE=1,FR=1", "NE=1", "PP=3", ""}));
}

TEST_F(MixedLabels, CallIsTracedInOrder) {
  platform().resources.answers(json(R"({"objList":[]})"));
  Records out;
  EMFResMgrI::getResourceLabels(out, {{0, "NE=1 100%s"}, {1, "NE=1,PP=1"}});
  const std::string called = "EMFResMgrI::getResourceLabelsByRest called";
  EXPECT_THAT(
      platform().trace.texts(),
      ElementsAre("EMFResMgrI::getResourceLabels  dnMapSize = 2",
                  "EMFResMgrI::getResourceLabels  resDN = NE=1 100%s",
                  "EMFResMgrI::getResourceLabels  resDN = NE=1,PP=1", called,
                  "EMFResMgrI::getPortResourceLabelsByRest called",
                  "EMFResMgrI::getPortResourceLabelsByRest jsonInfos size = 0", called, called,
                  called, called, "EMFResMgrI::getNEResourceLabelsByRest jsonInfos size = 0"));
  for (const auto& line : platform().trace.lines()) {
    EXPECT_THAT(line,
                FieldsAre("TaDebugWithPara", 3, "emfresinterface", "unknown", Gt(0), line.text));
  }
}

TEST_F(MixedLabels, PortsAreAnnouncedWithoutAnyToo) {
  Records out;
  EMFResMgrI::getResourceLabels(out, {{0, "NE=1"}});
  EXPECT_THAT(platform().trace.texts(),
              Contains("EMFResMgrI::getPortResourceLabelsByRest called").Times(1));
}

TEST_F(MixedLabels, EmptyMapDoesNothing) {
  Records out;
  EXPECT_EQ(EMFResMgrI::getResourceLabels(out, {}), 0);
  EXPECT_EQ(EMFResMgrI::getResourceLabelsEx(out, {}), 0);
  EXPECT_THAT(platform().trace.texts(), IsEmpty());
  EXPECT_THAT(platform().resources.queries(), IsEmpty());
}

TEST_F(MixedLabels, ExtendedCallIsTheSame) {
  echoNames();
  const DnMap dns = {{0, "NE=1"}, {1, "NE=1,FR=1"}};
  Records plain;
  Records extended;
  EXPECT_EQ(EMFResMgrI::getResourceLabels(plain, dns), 0);
  EXPECT_EQ(EMFResMgrI::getResourceLabelsEx(extended, dns), 0);
  EXPECT_EQ(plain, extended);
  EXPECT_THAT(extended, SizeIs(2));
}

TEST_F(MixedLabels, NamesOutsideTheNumberingArePassedOver) {
  echoNames();
  Records out;
  EXPECT_EQ(EMFResMgrI::getResourceLabels(
                out, {{-1, "NE=9"}, {0, "NE=1"}, {2, "NE=2"}, {3, "NE=3"}, {5, "NE=8"}}),
            0);
  EXPECT_EQ(namesOf(out), (Fdns{"NE=1", "NE=2", "NE=3"}));
}

// The list of a kind moves into the result whole, so a kind that fails brings nothing of itself.
TEST_F(MixedLabels, KindWithABadObjectKeepsThoseBeforeIt) {
  platform().resources.answersBy([](const ResourceQuery& query, Json::Value& answer) {
    answer = query.operation == "GetPortResourcePropertyByFDNs"
                 ? answerWith(R"({"nativeId":"NE=2,PP=1","name":"GE 1","portType":65})")
                 : answerWith(R"({"nativeId":"NE=2","detailDevType":1},{"detailDevType":"x"})");
    return true;
  });
  Records out;
  EXPECT_THROW(EMFResMgrI::getResourceLabels(out, {{0, "NE=2"}, {1, "NE=2,PP=1"}}),
               Json::LogicError);
  EXPECT_THAT(out, ElementsAre(ResourceDn{"NE=2,PP=1", 0, "GE 1", {6, 65}}));
}

}  // namespace
}  // namespace emf::test
