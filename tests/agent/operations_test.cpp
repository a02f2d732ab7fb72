#include "operations.h"

#include <gtest/gtest.h>

#include "error_texts.h"
#include "errorcodebufif.h"
#include "exit_status.h"
#include "host_failure.h"
#include "orma/bundle/interface_slot.h"

namespace ormaagent {
namespace {

using Records = std::vector<std::vector<Value>>;

TEST(Operations, ResFdnGivesTheLengthAndTheName) {
  const Answer answer = resFdn(Arguments({"4294967295"}));
  EXPECT_EQ(answer.result, 13);
  EXPECT_EQ(answer.fields, (std::vector<std::string>{"id", "fdn"}));
  EXPECT_EQ(answer.records, (Records{{std::int64_t{4294967295}, "NE=4294967295"}}));
}

TEST(Operations, ResLabelsWithoutANameIsWrongUsage) {
  for (const std::vector<std::string>& files : {std::vector<std::string>{}, {"/dev/null"}}) {
    try {
      resLabels(Arguments({}, {}, {{"--from", files}}));
      ADD_FAILURE() << "it was taken";
    } catch (const HostFailure& failure) {
      EXPECT_EQ(failure.exitStatus(), kExitUsage);
    }
  }
}

TEST(Operations, ErrorTextNeedsAServiceThatOffersTexts) {
  EXPECT_THROW(errorText(Arguments({"1"})), ServiceMissing);
}

class ScriptedTexts : public ErrorCodeBufIf {
 public:
  std::string GetIFName() override { return "ScriptedTexts"; }
  int IsValid() override { return 1; }
  void GetErrorInfo(std::string& text, const unsigned long& code) override {
    text = "text of " + std::to_string(code);
  }
};

TEST(Operations, ErrorTextAsksTheInterfaceOfTheSlot) {
  ScriptedTexts texts;
  NS_BUNDLEMGR1::SetIFBuf("ErrorCodeBufIf", &texts);
  const Answer answer = errorText(Arguments({"0xFFFFFFFFFFFFFFFF"}));
  NS_BUNDLEMGR1::CheckIFBuf("ErrorCodeBufIf")->remove(&texts);
  EXPECT_EQ(answer.result, 0);
  EXPECT_EQ(answer.fields, (std::vector<std::string>{"code", "text"}));
  EXPECT_EQ(answer.records,
            (Records{{std::uint64_t{0xFFFFFFFFFFFFFFFF}, "text of 18446744073709551615"}}));
}

}  // namespace
}  // namespace ormaagent
