#include "link_ids.h"

#include <gtest/gtest.h>

namespace orma::southbound {
namespace {

TEST(LinkIdText, NamesTheKind) {
  EXPECT_EQ(linkResId(0, 5), "VLINK=0:5");
  EXPECT_EQ(linkResId(105, 6), "L2LINK=105:6");
  EXPECT_EQ(linkResId(204, 77), "IPLINK=204:77");
  EXPECT_EQ(linkResId(-1, -7), "IPLINK=-1:-7");
}

TEST(LinkIdText, IsReadBack) {
  for (const std::int32_t kind : {0, 105, 204, 7, -1}) {
    for (const std::int64_t link : {std::int64_t{0}, INT64_MAX, INT64_MIN}) {
      const std::string text = linkResId(kind, link);
      const auto key = parseLinkResId(text);
      ASSERT_TRUE(key) << text;
      EXPECT_EQ(key->link, link);
      EXPECT_EQ(key->resType, resTypeOf(kind));
    }
  }
}

TEST(LinkIdText, WithoutANumberAtItsEndIsNone) {
  for (const char* text :
       {"", "=", "77", "204:77", "IPLINK=", "IPLINK=204:", "IPLINK=x", "IPLINK=204:7x",
        "IPLINK=204:+7", "IPLINK=204:0x7", "IPLINK=9223372036854775808"}) {
    EXPECT_FALSE(parseLinkResId(text)) << text;
  }
}

}  // namespace
}  // namespace orma::southbound
