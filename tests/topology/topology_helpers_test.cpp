// Reading members of topology objects.
#include <gtest/gtest.h>

#include "rest_double.h"
#include "topologyjson.h"

namespace emf::test {
namespace {

using emf::doubles::json;

const Json::Value object =
    json(R"({"text":"a","empty":"","null":null,"number":-5,"real":1.5,"true":true,"list":[]})");

TEST(TopologyMember, IsItsTextOrEmpty) {
  EXPECT_EQ(getStringOrEmpty(object, "text"), "a");
  EXPECT_EQ(getStringOrEmpty(object, "empty"), "");
  EXPECT_EQ(getStringOrEmpty(object, "null"), "");
  EXPECT_EQ(getStringOrEmpty(object, "number"), "-5");
  EXPECT_EQ(getStringOrEmpty(object, "real"), "1.5");
  EXPECT_EQ(getStringOrEmpty(object, "true"), "true");
  EXPECT_EQ(getStringOrEmpty(object, "absent"), "");
  EXPECT_THROW(getStringOrEmpty(object, "list"), Json::LogicError);
}

TEST(TopologyMember, OfWhatIsNoObjectIsEmpty) {
  for (const char* text : {"null", "5", R"("text")", "[1]"}) {
    std::string out = "unchanged";
    EXPECT_EQ(getStringOrEmpty(json(text), "text"), "") << text;
    EXPECT_FALSE(getStringMember(json(text), "text", out)) << text;
    EXPECT_EQ(out, "unchanged") << text;
  }
}

TEST(TopologyMember, ResultSaysWhetherItIsThereAndNotEmpty) {
  std::string out = "unchanged";
  EXPECT_FALSE(getStringMember(object, "absent", out));
  EXPECT_EQ(out, "unchanged");
  EXPECT_TRUE(getStringMember(object, "number", out));
  EXPECT_EQ(out, "-5");
  EXPECT_FALSE(getStringMember(object, "empty", out));
  EXPECT_EQ(out, "");
  out = "unchanged";
  EXPECT_FALSE(getStringMember(object, "null", out));
  EXPECT_EQ(out, "");
}

TEST(ProcIdText, EndsAtTheNextBlankOrTheEnd) {
  const std::pair<const char*, const char*> kTexts[] = {
      {"a ProcID 12 b", "12"}, {"ProcID 12", "12"},     {"ProcID12", ""},        {"ProcID ", ""},
      {"ProcID  12", ""},      {"ProcID 1;x y", "1;x"}, {"ProcIDProcID 3", "3"}, {"", ""}};
  for (const auto& [exInfo, text] : kTexts) EXPECT_EQ(getProcIdText(exInfo), text) << exInfo;
}

TEST(LeadingNumber, IsCutTo32Bits) {
  const std::pair<const char*, std::int32_t> kTexts[] = {{"12", 12},
                                                         {"-12x", -12},
                                                         {" +7", 7},
                                                         {"", 0},
                                                         {"x", 0},
                                                         {"0x10", 0},
                                                         {"010", 10},
                                                         {"2147483647", 2147483647},
                                                         {"4294967295", -1},
                                                         {"4294967296", 0},
                                                         {"99999999999999999999", -1},
                                                         {"-99999999999999999999", 0}};
  for (const auto& [text, number] : kTexts) EXPECT_EQ(emf::leadingNumber(text), number) << text;
}

}  // namespace
}  // namespace emf::test
