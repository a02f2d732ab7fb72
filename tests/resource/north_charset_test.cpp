#include "platform_test.h"
#include "resourcenames.h"

namespace emf::test {
namespace {

using emf::doubles::Conversion;
using emf::doubles::platform;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class NorthCharset : public emf::doubles::PlatformTest {};

TEST_F(NorthCharset, SwitchOneConvertsToGbk) {
  platform().text.characterSetSwitch(1);
  EXPECT_EQ(ToNorthCharset("\xE4\xB8\xAD"), "UTF-8>GBK:\xE4\xB8\xAD");
  EXPECT_THAT(platform().text.conversions(),
              ElementsAre(Conversion{"UTF-8", "GBK", "\xE4\xB8\xAD"}));
}

TEST_F(NorthCharset, SwitchTwoConvertsToLatinOne) {
  platform().text.characterSetSwitch(2);
  EXPECT_EQ(ToNorthCharset("\xC3\xA9"), "UTF-8>ISO-8859-1:\xC3\xA9");
  EXPECT_THAT(platform().text.conversions(),
              ElementsAre(Conversion{"UTF-8", "ISO-8859-1", "\xC3\xA9"}));
}

TEST_F(NorthCharset, AnyOtherSwitchCopiesWithoutAConversion) {
  for (const int value : {0, 3, -1, 100}) {
    platform().text.characterSetSwitch(value);
    EXPECT_EQ(ToNorthCharset("\xE4\xB8\xAD \xFF 100%s"), "\xE4\xB8\xAD \xFF 100%s") << value;
    EXPECT_EQ(ToNorthCharset(""), "") << value;
  }
  EXPECT_THAT(platform().text.conversions(), IsEmpty());
}

TEST_F(NorthCharset, TextEndsAtItsFirstNul) {
  const std::string text("a\0b", 3);
  EXPECT_EQ(ToNorthCharset(text.c_str()), "a");
  platform().text.characterSetSwitch(1);
  EXPECT_EQ(ToNorthCharset(text.c_str()), "UTF-8>GBK:a");
}

TEST_F(NorthCharset, EmptyTextIsConvertedToo) {
  platform().text.characterSetSwitch(1);
  EXPECT_EQ(ToNorthCharset(""), "UTF-8>GBK:");
}

TEST_F(NorthCharset, SwitchIsReadAtEveryCall) {
  EXPECT_EQ(ToNorthCharset("a"), "a");
  platform().text.characterSetSwitch(1);
  EXPECT_EQ(ToNorthCharset("a"), "UTF-8>GBK:a");
  platform().text.characterSetSwitch(0);
  EXPECT_EQ(ToNorthCharset("a"), "a");
  EXPECT_EQ(platform().text.switchReads(), 3);
}

TEST_F(NorthCharset, ResultOfTheConversionIsTakenAsItIs) {
  platform().text.characterSetSwitch(1);
  platform().text.conversionGives([](const std::string&) { return std::string(); });
  EXPECT_EQ(ToNorthCharset("lost"), "");
}

}  // namespace
}  // namespace emf::test
