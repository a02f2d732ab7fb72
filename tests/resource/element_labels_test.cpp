#include <json/value.h>

#include <map>
#include <string>
#include <type_traits>

#include "emfresinterface.h"
#include "platform_test.h"

namespace emf::test {
namespace {

using emf::doubles::json;
using emf::doubles::platform;
using ::testing::ElementsAre;
using ::testing::FieldsAre;
using ::testing::Gt;

static_assert(std::is_same_v<decltype(EMFResMgrI::getAllNeResLabel),
                             std::int64_t(std::map<std::string, std::string>&)>);

class ElementLabels : public emf::doubles::PlatformTest {};

TEST_F(ElementLabels, EveryElementHasItsLabelAndTheFirstOneStays) {
  platform().text.characterSetSwitch(1);
  platform().rest.devices(
      {json(R"({"nativeId":"OS=1","name":"OSS"})"), json(R"({"nativeId":"NE=2","name":"core-1"})"),
       json(R"({"nativeId":"NE=2,FR=1","name":"frame"})"),
       json(R"({"nativeId":"NE=2","name":"again"})"), json(R"({"nativeId":"NE=3","name":null})"),
       json(R"({"name":"nameless"})")});
  std::map<std::string, std::string> out = {{"NE=9", "before"}};
  EXPECT_EQ(EMFResMgrI::getAllNeResLabel(out), 0);
  EXPECT_EQ(out, (std::map<std::string, std::string>{{"NE=9", "before"},
                                                     {"OS=1", "UTF-8>GBK:OSS"},
                                                     {"NE=2", "UTF-8>GBK:core-1"},
                                                     {"NE=3", "UTF-8>GBK:"},
                                                     {"", "UTF-8>GBK:nameless"}}));
}

TEST_F(ElementLabels, ReadingIsTraced) {
  platform().rest.devices({json(R"({"nativeId":"NE=2","name":"a"})"),
                           json(R"({"nativeId":"NE=2,FR=1","name":"b"})"),
                           json(R"({"nativeId":"NE=2","name":"c"})")});
  std::map<std::string, std::string> out;
  EMFResMgrI::getAllNeResLabel(out);
  const auto debug = [](const char* text) {
    return FieldsAre("TaDebugWithPara", 3, "emfresinterface", "unknown", Gt(0), text);
  };
  EXPECT_THAT(platform().trace.lines(),
              ElementsAre(FieldsAre("TaTrace", 0, "emfresinterface", "unknown", Gt(0),
                                    "EMFResMgrI::getAllNeResLabel Entered!"),
                          debug("EMFResMgrI::getResourceLabels  neDN = NE=2, neLabel = a"),
                          debug("EMFResMgrI::getResourceLabels  neDN = NE=2, neLabel = c"),
                          debug("getAllNeResLabel GetAllDevProperty size = 1")));
}

TEST_F(ElementLabels, FailedReadAddsNothing) {
  platform().rest.devicesFail();
  std::map<std::string, std::string> out = {{"NE=9", "before"}};
  EXPECT_EQ(EMFResMgrI::getAllNeResLabel(out), 0);
  EXPECT_EQ(out, (std::map<std::string, std::string>{{"NE=9", "before"}}));
  EXPECT_EQ(platform().trace.texts().back(), "getAllNeResLabel GetAllDevProperty size = 0");
}

TEST_F(ElementLabels, MemberOfAWrongTypeReachesTheCaller) {
  platform().rest.devices(
      {json(R"({"nativeId":"NE=2","name":"a"})"), json(R"({"nativeId":["NE=3"],"name":"b"})")});
  std::map<std::string, std::string> out;
  EXPECT_THROW(EMFResMgrI::getAllNeResLabel(out), Json::LogicError);
  EXPECT_EQ(out, (std::map<std::string, std::string>{{"NE=2", "a"}}));
}

TEST_F(ElementLabels, ResultOfTheReadIsNotLookedAt) {
  platform().rest.devices({json(R"({"nativeId":"NE=2","name":"a"})")}, false);
  std::map<std::string, std::string> out;
  EXPECT_EQ(EMFResMgrI::getAllNeResLabel(out), 0);
  EXPECT_EQ(out, (std::map<std::string, std::string>{{"NE=2", "a"}}));
}

}  // namespace
}  // namespace emf::test
