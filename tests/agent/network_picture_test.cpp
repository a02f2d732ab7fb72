#include "network_picture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

namespace ormaagent {
namespace {

using testing::HasSubstr;
using testing::Not;

NetworkPicture pictureOf(const std::string& label) {
  NetworkPicture picture;
  picture.nodes = {{12, label, {0, 0}, "S1000"}};
  return picture;
}

TEST(NetworkPicture, ANodeHasItsSpotLabelAndTooltip) {
  EXPECT_THAT(
      dotText(pictureOf("core")),
      HasSubstr(
          "\n  \"d12\" [pos=\"0.00,0.00\", width=0.45, fillcolor=\"#FFFFFF\", label=\"core\", "
          "tooltip=\"core (12)\"];\n"));
}

TEST(NetworkPicture, WhatDotWouldReadAsMarksIsEscaped) {
  const std::string dot = dotText(pictureOf("a\"];b\\N&lt;\n"));
  EXPECT_THAT(dot, HasSubstr("label=\"a\\\"];b\\\\N&amp;lt;\\\\x0A\","));
}

TEST(NetworkPicture, BytesThatAreNoUtf8AreEscaped) {
  EXPECT_THAT(dotText(pictureOf("a\xff")), HasSubstr("label=\"a\\\\xFF\","));
}

TEST(NetworkPicture, ALongLabelIsCutBetweenCharacters) {
  const std::string dot = dotText(pictureOf("北京核心路由器机房第一号设备"));
  EXPECT_THAT(dot, HasSubstr("label=\"北京核心路由器机房…\""));
  EXPECT_THAT(dot, HasSubstr("tooltip=\"北京核心路由器机房第一号设备 (12)\""));
  EXPECT_THAT(dotText(pictureOf(std::string(20, 'x'))), Not(HasSubstr("…")));
  EXPECT_THAT(dotText(pictureOf(std::string(21, 'x'))),
              HasSubstr("label=\"" + std::string(19, 'x') + "…\""));
  EXPECT_THAT(dotText(pictureOf(std::string(5000, '\xff'))), HasSubstr("…\""));
}

TEST(NetworkPicture, ASubMapIsABoxAroundItsNodes) {
  NetworkPicture picture = pictureOf("core");
  picture.boxes = {{"S1000", "North \"1\""}, {"S1001", "empty"}};
  const std::string dot = dotText(picture);
  EXPECT_THAT(dot, HasSubstr("  subgraph \"cluster_S1000\" {\n"
                             "    graph [bb=\"-32.20,-18.00,32.20,32.00\", lp=\"0.00,25.00\""));
  EXPECT_THAT(dot, HasSubstr("label=\"North \\\"1\\\"\"];\n  \"d12\" ["));
  EXPECT_THAT(dot, Not(HasSubstr("S1001"))) << "a box without a node has no place";
}

TEST(NetworkPicture, LinksHaveTheColourOfTheirStatus) {
  NetworkPicture picture;
  picture.nodes = {{2, "a", {0, 0}, "S1"}, {3, "b", {9, 9}, "S1"}};
  picture.links = {{"up", "2", "3", 1}, {"down", "3", "2", 8}};
  const std::string dot = dotText(picture);
  EXPECT_THAT(dot, HasSubstr("\"d2\" -- \"d3\" [color=\"" + std::string(linkColour(1)) +
                             "\", tooltip=\"up: status 1\"];"));
  EXPECT_THAT(dot, HasSubstr("\"d3\" -- \"d2\" [color=\"" + std::string(linkColour(8)) +
                             "\", tooltip=\"down: status 8\"];"));
}

TEST(NetworkPicture, ALinkWithoutItsNodesIsLeftOut) {
  NetworkPicture picture = pictureOf("core");
  picture.links = {{"lost", "12", "-1", -1}};
  EXPECT_THAT(dotText(picture), Not(HasSubstr("--")));
}

TEST(NetworkPicture, EveryStatusHasAColourOfItsOwn) {
  std::set<std::string> colours;
  for (const int status : {-1, 0, 1, 2, 8, 9, 1000}) colours.insert(linkColour(status));
  EXPECT_EQ(colours.size(), 7u);
}

}  // namespace
}  // namespace ormaagent
