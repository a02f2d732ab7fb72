#include <stdexcept>
#include <type_traits>

#include "emftopointerface.h"
#include "platform_test.h"
#include "submapbufmgr.h"
#include "topology_records.h"

namespace emf::test {
namespace {

using emf::doubles::compact;
using emf::doubles::json;
using emf::doubles::platform;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

static_assert(std::is_same_v<decltype(EMFTopoI::getAllNodes),
                             std::int64_t(const std::string&, std::list<Node>&)>);
static_assert(std::is_same_v<decltype(EMFTopoI::getNode), std::int64_t(const SimNode&, Node&)>);

constexpr char kAllNodesFilter[] =
    R"({"logOp":"and","simple":{"caseSensitive":"false","name":"nodeClass","operator":"in",)"
    R"("value":["ne","container"]}})";

constexpr char kWholeObject[] =
    R"({"parentId":"102","nativeId":"NE=12","iconFile":"/a/b/router.png",)"
    R"("exInfo":"NodeType=x;ProcID=7","label":"core-1","ipAddr":"10.0.0.12","remark":"rack 4",)"
    R"("nodeClass":"ne","posX":-3,"posY":44,"topoId":9})";

SimNode keyOf(const std::string& nodeId, const std::string& parent = "S5") {
  SimNode key;
  key.parentSubMapId = parent;
  key.nodeId = nodeId;
  return key;
}

Node wholeNode() {
  Node node;
  node.parentSubMapId = "S102";
  node.nodeId = "12";
  node.deviceId = 12;
  node.iconName = "router";
  node.nodeType = "x";
  node.label = "core-1";
  node.ipAddr = "10.0.0.12";
  node.remark = "rack 4";
  node.procId = 7;
  node.fixedCode = 2011;
  node.posX = -3;
  node.posY = 44;
  node.topoId = 9;
  return node;
}

// What an operation that sets no field leaves there.
Node leftOver() {
  Node node;
  node.parentSubMapId = node.nodeId = node.iconName = node.nodeType = node.label = node.ipAddr =
      node.remark = "left over";
  node.deviceId = 77;
  node.procId = node.fixedCode = node.zeroCode = node.spareCode = node.nodeKind = node.posX =
      node.posY = node.topoId = 77;
  return node;
}

class Nodes : public emf::doubles::PlatformTest {
 protected:
  ~Nodes() override { SubmapBufMgr::Destroy(); }

  // The next answer of the view service: one page with these objects.
  static void view(const std::string& objects) {
    platform().rest.topoViewAnswers(json(R"({"dataList":[)" + objects + "]}"));
  }
  // An object below the root with one more member.
  static std::string below(const std::string& member) {
    return R"({"parentId":"102",)" + member + "}";
  }
  static Node only(const std::string& object) {
    std::list<Node> nodes;
    view(object);
    EXPECT_EQ(EMFTopoI::getAllNodes("", nodes), 0);
    EXPECT_THAT(nodes, SizeIs(1)) << object;
    return nodes.empty() ? leftOver() : nodes.front();
  }
  static Node fetched(const std::string& object, Node out = leftOver()) {
    view(object);
    EXPECT_EQ(EMFTopoI::getNode(keyOf("12"), out), 0);
    return out;
  }

  std::list<Node> nodes_;
};

TEST_F(Nodes, AllNodesAreAskedForByTheirClass) {
  EXPECT_EQ(EMFTopoI::getAllNodes("S5", nodes_), 0);
  ASSERT_THAT(platform().rest.topoViewQueries(), SizeIs(1));
  EXPECT_EQ(compact(platform().rest.topoViewQueries()[0].filter), kAllNodesFilter);
  EXPECT_EQ(platform().rest.topoViewQueries()[0].marker, "");
}

TEST_F(Nodes, OneNodeIsAskedForByItsNativeId) {
  const std::pair<const char*, const char*> kIds[] = {
      {"1", "OS=1"},   {"12", "NE=12"},          {"2", "NE=2"}, {"", "NE="}, {"01", "NE=01"},
      {"1 ", "NE=1 "}, {"a\"b=1", "NE=a\\\"b=1"}};
  for (const auto& [nodeId, value] : kIds) {
    platform().rest.reset();
    Node out;
    EXPECT_EQ(EMFTopoI::getNode(keyOf(nodeId), out), 0);
    ASSERT_THAT(platform().rest.topoViewQueries(), SizeIs(1));
    EXPECT_EQ(compact(platform().rest.topoViewQueries()[0].filter),
              R"({"logOp":"and","simple":{"caseSensitive":"false","name":"nativeId",)"
              R"("operator":"equal","value":")" +
                  std::string(value) + R"("}})");
  }
}

TEST_F(Nodes, ParentInTheKeyIsNotLookedAt) {
  Node out;
  view(kWholeObject);
  EMFTopoI::getNode(keyOf("12", "nowhere"), out);
  EXPECT_EQ(out.nodeId, "12");
  EXPECT_EQ(platform().rest.topoViewQueries()[0].filter["simple"]["value"], "NE=12");
}

TEST_F(Nodes, EachObjectBelowTheRootBecomesANode) {
  view(std::string(kWholeObject) + "," + below(R"("nativeId":"NE=13","posX":5)"));
  EXPECT_EQ(EMFTopoI::getAllNodes("", nodes_), 0);
  Node second;
  second.parentSubMapId = "S102";
  second.nodeId = "13";
  second.deviceId = 13;
  second.fixedCode = 2011;
  second.posX = 5;
  EXPECT_THAT(nodes_, ElementsAre(wholeNode(), second));
  EXPECT_THAT(platform().log.lines(), IsEmpty());
  EXPECT_THAT(platform().trace.lines(), IsEmpty());
}

TEST_F(Nodes, WhateverTheSubmapTheRootAnswers) {
  for (const char* subMapId : {"", "S102", "S55", "ORMAP_PHY_SUBMAP", "/"}) {
    platform().rest.reset();
    nodes_.clear();
    view(kWholeObject);
    EXPECT_EQ(EMFTopoI::getAllNodes(subMapId, nodes_), 0);
    EXPECT_THAT(nodes_, ElementsAre(wholeNode())) << subMapId;
    EXPECT_EQ(compact(platform().rest.topoViewQueries()[0].filter), kAllNodesFilter) << subMapId;
  }
}

TEST_F(Nodes, ObjectsBelowOtherSubmapsAreSkipped) {
  for (const char* parent : {R"("1020")", R"("10")", R"("")", R"("102 ")", R"("S102")", "1020",
                             "null", "102.5", "true"}) {
    view(R"({"parentId":)" + std::string(parent) + R"(,"nativeId":"NE=9"},)" + kWholeObject);
    nodes_.clear();
    EMFTopoI::getAllNodes("", nodes_);
    EXPECT_THAT(nodes_, ElementsAre(wholeNode())) << parent;
  }
  view(R"({"nativeId":"NE=9"})");
  nodes_.clear();
  EMFTopoI::getAllNodes("", nodes_);
  EXPECT_THAT(nodes_, IsEmpty());
}

TEST_F(Nodes, NothingIsReadOfASkippedObjectButItsParent) {
  view(R"({"parentId":"10","nativeId":[],"iconFile":[],"exInfo":"ProcID","label":[],"posX":"x"})");
  EXPECT_EQ(EMFTopoI::getAllNodes("", nodes_), 0);
  EXPECT_THAT(nodes_, IsEmpty());
}

TEST_F(Nodes, NumberIsAParentToo) {
  EXPECT_EQ(only(R"({"parentId":102,"nativeId":"NE=9"})").nodeId, "9");
}

TEST_F(Nodes, NodesAreAppended) {
  nodes_.push_back(leftOver());
  view(kWholeObject);
  EMFTopoI::getAllNodes("", nodes_);
  EXPECT_THAT(nodes_, ElementsAre(leftOver(), wholeNode()));
}

TEST_F(Nodes, PagesAreReadToTheirEnd) {
  platform().rest.topoViewAnswers(json(R"({"dataList":[)" + below(R"("nativeId":"NE=2")") +
                                       R"(],"hasNext":true,"marker":"m"})"));
  view(below(R"("nativeId":"NE=3")"));
  EMFTopoI::getAllNodes("", nodes_);
  ASSERT_THAT(nodes_, SizeIs(2));
  EXPECT_EQ(nodes_.front().nodeId, "2");
  EXPECT_EQ(nodes_.back().nodeId, "3");
}

TEST_F(Nodes, FailedReadIsASuccessWithoutNodes) {
  platform().rest.topoViewFails();
  EXPECT_EQ(EMFTopoI::getAllNodes("", nodes_), 0);
  EXPECT_THAT(nodes_, IsEmpty());
  platform().rest.topoViewFails();
  Node out = leftOver();
  EXPECT_EQ(EMFTopoI::getNode(keyOf("12"), out), 0);
  EXPECT_EQ(out, leftOver());
}

TEST_F(Nodes, UnknownNodeLeavesTheRecordAsItWas) {
  view("");
  Node out = leftOver();
  EXPECT_EQ(EMFTopoI::getNode(keyOf("12"), out), 0);
  EXPECT_EQ(out, leftOver());
}

TEST_F(Nodes, OneNodeIsTheFirstObjectWhereverItLies) {
  Node expected = wholeNode();
  expected.parentSubMapId = "S5";
  expected.iconName = "/a/b/router.png";
  expected.spareCode = 77;  // no step sets it
  std::string object = kWholeObject;
  object.replace(object.find("102"), 3, "5");
  EXPECT_EQ(fetched(object + "," + below(R"("nativeId":"NE=13")")), expected);
}

TEST_F(Nodes, FieldsThatNoStepSetsKeepWhatTheyHeld) {
  const Node out = fetched(R"({"nativeId":"abc"})");
  Node expected;
  expected.parentSubMapId = "S";
  expected.nodeId = "abc";
  expected.deviceId = 77;
  expected.nodeType = "left over";
  expected.fixedCode = 2011;
  expected.spareCode = 77;
  EXPECT_EQ(out, expected);
}

TEST_F(Nodes, MembersThatAreNotThereReadAsEmptyAndZero) {
  for (const char* object :
       {R"({"parentId":"102"})",
        R"({"parentId":"102","nativeId":null,"iconFile":null,"exInfo":null,"label":null,)"
        R"("ipAddr":null,"remark":null,"nodeClass":null,"posX":null,"posY":null,"topoId":null})"}) {
    Node expected;
    expected.parentSubMapId = "S102";
    expected.fixedCode = 2011;
    EXPECT_EQ(only(object), expected) << object;
  }
}

TEST_F(Nodes, IdIsBehindTheFirstEqualsAndItsNumberIsCutTo32Bits) {
  const std::tuple<const char*, const char*, std::int64_t> kIds[] = {
      {"NE=123", "123", 123},
      {"abc", "abc", 0},
      {"", "", 0},
      {"NE=", "", 0},
      {"=5", "5", 5},
      {"NE=5=6", "5=6", 5},
      {"NE=-7", "-7", -7},
      {"NE= 8x", " 8x", 8},
      {"NE=x8", "x8", 0},
      {"NE=2147483648", "2147483648", -2147483648LL},
      {"NE=4294967295", "4294967295", -1},
      {"NE=4294967301", "4294967301", 5},
      {"NE=99999999999999999999", "99999999999999999999", -1},
  };
  for (const auto& [nativeId, nodeId, deviceId] : kIds) {
    const Node node = only(below(R"("nativeId":")" + std::string(nativeId) + '"'));
    EXPECT_EQ(node.nodeId, nodeId) << nativeId;
    EXPECT_EQ(node.deviceId, deviceId) << nativeId;
  }
}

TEST_F(Nodes, ProcessAndTypeComeFromTheExtraInformation) {
  const std::tuple<const char*, const char*, int> kTexts[] = {
      {"NodeType=x;ProcID=7", "x", 7},
      {"a NodeType:router 9;ProcID:-12,b", "router 9", -12},
      {"NodeType=;ProcID=7", "", 7},
      {"ProcID=7", "unchanged", 7},
      {"ProcID=", "unchanged", 0},
      {"ProcID= 42abc", "unchanged", 42},
      {"ProcIDx7", "unchanged", 7},
      {"ProcID7", "unchanged", 0},
      {"ProcID=1;ProcID=2", "unchanged", 1},
      {"NodeType=a;NodeType=b;ProcID=1", "a;NodeType=b", 1},
      {"ProcID=4294967301", "unchanged", 5},
      {"NodeType=x", "unchanged", 0},
      {"NodeType", "unchanged", 0},
      {"procid=7", "unchanged", 0},
      {"", "unchanged", 0},
      // The type behind the process wraps the length around: to the end of the text.
      {"ProcID=7;NodeType=x;y", "x;y", 7},
      {"ProcID=7;NodeType=", "", 7},
      // So it does when the two words leave no room for both separators.
      {"NodeTypeProcID=7", "rocID=7", 7},
      {"NodeType=ProcID=7", "ProcID=7", 7},
  };
  for (const auto& [exInfo, nodeType, procId] : kTexts) {
    Node before;
    before.nodeType = "unchanged";
    before.procId = 77;
    const Node node = fetched(R"({"exInfo":")" + std::string(exInfo) + R"("})", before);
    EXPECT_EQ(node.nodeType, nodeType) << exInfo;
    EXPECT_EQ(node.procId, procId) << exInfo;
  }
}

TEST_F(Nodes, WordAtTheEndIsOutOfRangeAndEarlierNodesStay) {
  for (const char* exInfo :
       {"ProcID", "x;ProcID", "NodeType=x;ProcID", "ProcID=7;NodeType", "ProcID=7 NodeType"}) {
    view(std::string(kWholeObject) + "," + below(R"("exInfo":")" + std::string(exInfo) + '"') +
         "," + kWholeObject);
    nodes_.clear();
    EXPECT_THROW(EMFTopoI::getAllNodes("", nodes_), std::out_of_range) << exInfo;
    EXPECT_THAT(nodes_, ElementsAre(wholeNode())) << exInfo;
    view(R"({"exInfo":")" + std::string(exInfo) + R"("})");
    Node out;
    EXPECT_THROW(EMFTopoI::getNode(keyOf("12"), out), std::out_of_range) << exInfo;
  }
}

TEST_F(Nodes, StepsBeforeTheExceptionHaveFilledTheNode) {
  view(R"({"parentId":"5","nativeId":"NE=13","exInfo":"ProcID=3;NodeType","label":"new"})");
  Node out = leftOver();
  EXPECT_THROW(EMFTopoI::getNode(keyOf("13"), out), std::out_of_range);
  Node expected = leftOver();
  expected.parentSubMapId = "S5";
  expected.nodeId = "13";
  expected.deviceId = 13;
  expected.iconName = "";
  expected.procId = 3;
  EXPECT_EQ(out, expected);
  view(R"({"parentId":"6","exInfo":[],"iconFile":"/a.png"})");
  EXPECT_THROW(EMFTopoI::getNode(keyOf("13"), out), Json::LogicError);
  expected.parentSubMapId = "S6";
  expected.nodeId = "";
  expected.iconName = "/a.png";
  EXPECT_EQ(out, expected);
}

// One member after the other cannot be read; each step before it has filled its fields.
TEST_F(Nodes, StepsBeforeAMemberThatCannotBeReadHaveFilledTheNode) {
  const std::pair<const char*, void (*)(Node&)> kSteps[] = {
      {"parentId", [](Node&) {}},
      {"nativeId", [](Node& node) { node.parentSubMapId = "S102"; }},
      {"exInfo",
       [](Node& node) {
         node.nodeId = "12";
         node.deviceId = 12;
         node.iconName = "/a/b/router.png";
       }},
      {"label",
       [](Node& node) {
         node.procId = 7;
         node.nodeType = "x";
       }},
      {"ipAddr", [](Node& node) { node.label = "core-1"; }},
      {"nodeClass",
       [](Node& node) {
         node.ipAddr = "10.0.0.12";
         node.fixedCode = 2011;
         node.zeroCode = 0;
       }},
      {"posX", [](Node& node) { node.nodeKind = 0; }},
      {"posY", [](Node& node) { node.posX = -3; }},
      {"topoId", [](Node& node) { node.posY = 44; }},
      {"remark", [](Node& node) { node.topoId = 9; }},
  };
  Node expected = leftOver();
  for (const auto& [member, fill] : kSteps) {
    fill(expected);
    Json::Value object = json(kWholeObject);
    object[member] = Json::Value(Json::arrayValue);
    view(compact(object));
    Node out = leftOver();
    EXPECT_THROW(EMFTopoI::getNode(keyOf("12"), out), Json::LogicError) << member;
    EXPECT_EQ(out, expected) << member;
  }
}

TEST_F(Nodes, KindIsThatOfTheClass) {
  const std::tuple<const char*, const char*, int> kKinds[] = {
      {"subnet", "", 255},
      {"container", "", 255},
      {"subnet", "MainNode", 255},
      {"container", "MainNode", 255},
      {"ne", "", 0},
      {"ne", "MainNode", 254},
      {"ne", "aMainNodeb", 254},
      {"ne", "mainnode", 0},
      {"", "MainNode", 0},
      {"link", "MainNode", 0},
      {"NE", "MainNode", 0},
      {"Subnet", "", 0},
  };
  for (const auto& [nodeClass, exInfo, kind] : kKinds) {
    const Node node =
        only(below(R"("nodeClass":")" + std::string(nodeClass) + R"(","exInfo":")" + exInfo + '"'));
    EXPECT_EQ(node.nodeKind, kind) << nodeClass << ' ' << exInfo;
  }
}

TEST_F(Nodes, IconIsTheBareNameInTheListAndThePathForOneNode) {
  const std::pair<const char*, const char*> kIcons[] = {
      {"/a/b/router.png", "router"},
      {"/a/b/router", "/a/b/router"},
      {"router.png", "router.png"},
      {"router", "router"},
      {"", ""},
      {"/a.b/router", "/a.b/router"},
      {"/a/router.tar.gz", "router.tar"},
      {"/router.", "router"},
      {"/.png", ""},
      {"/", "/"},
      {"a/.", ""},
      {"/a/b/", "/a/b/"},
  };
  for (const auto& [iconFile, name] : kIcons) {
    const std::string object = below(R"("iconFile":")" + std::string(iconFile) + '"');
    EXPECT_EQ(only(object).iconName, name) << iconFile;
    EXPECT_EQ(fetched(object).iconName, iconFile) << iconFile;
  }
}

TEST_F(Nodes, TextsAreConvertedButNotTheCutId) {
  platform().text.characterSetSwitch(1);
  platform().text.conversionGives([](const std::string& text) { return "<" + text + ">"; });
  Node expected = wholeNode();
  expected.parentSubMapId = "<S102>";
  expected.iconName = "<router>";
  expected.nodeType = "<x>";
  expected.label = "<core-1>";
  expected.ipAddr = "<10.0.0.12>";
  expected.remark = "<rack 4>";
  EXPECT_EQ(only(kWholeObject), expected);
  EXPECT_EQ(only(below(R"("nativeId":"abc")")).nodeId, "<abc>");
  EXPECT_EQ(fetched(kWholeObject).iconName, "</a/b/router.png>");
  EXPECT_EQ(only(below(R"("iconFile":"plain")")).iconName, "<plain>");
}

TEST_F(Nodes, PositionsAreReadAsNumbers) {
  const Node node = only(below(R"("posX":2147483647,"posY":-2147483648,"topoId":12.75)"));
  EXPECT_EQ(node.posX, 2147483647);
  EXPECT_EQ(node.posY, -2147483647 - 1);
  EXPECT_EQ(node.topoId, 12);
}

TEST_F(Nodes, NumberThatIsNoneIsToldAndEarlierNodesStay) {
  for (const char* member : {R"("posX":"5")", R"("posY":[])", R"("topoId":{})",
                             R"("posX":2147483648)", R"("topoId":"x")"}) {
    view(std::string(kWholeObject) + "," + below(member));
    nodes_.clear();
    EXPECT_THROW(EMFTopoI::getAllNodes("", nodes_), Json::LogicError) << member;
    EXPECT_THAT(nodes_, ElementsAre(wholeNode())) << member;
  }
}

TEST_F(Nodes, ObjectThatIsNoneIsTold) {
  for (const char* object : {"5", R"("text")", "[1]", R"({"parentId":[]})"}) {
    view(std::string(kWholeObject) + "," + object);
    nodes_.clear();
    EXPECT_THROW(EMFTopoI::getAllNodes("", nodes_), Json::LogicError) << object;
    EXPECT_THAT(nodes_, ElementsAre(wholeNode())) << object;
  }
}

TEST_F(Nodes, TextsKeepEveryByteBeforeTheFirstNul) {
  const Node node = only(below(R"("label":"%s%n\u4e2d","remark":"a\u0000b")"));
  EXPECT_EQ(node.label, "%s%n\xE4\xB8\xAD");
  EXPECT_EQ(node.remark, "a");
}

}  // namespace
}  // namespace emf::test
