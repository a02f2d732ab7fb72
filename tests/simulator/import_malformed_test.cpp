#include <gmock/gmock.h>

#include <map>

#include "generate.h"
#include "graphml_text.h"
#include "import.h"
#include "support.h"

namespace ormasim::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

struct Malformed {
  std::string name;
  std::string text;
  std::string complaint;  // behind the file's name
};

void PrintTo(const Malformed& malformed, std::ostream* out) { *out << malformed.name; }

class MalformedImportTest : public ::testing::TestWithParam<Malformed> {
 protected:
  TempDirectory directory_;
  const std::string database_ = directory_.path("net.db");
};

TEST_P(MalformedImportTest, IsRefusedByNameLineAndReasonAndTheDatabaseStays) {
  generateFile(database_, {20, 1}, false);
  const std::vector<std::string> before = dump(database_);
  const std::string good = directory_.write("a.graphml", graphml(node("0", {})));
  const std::string bad = directory_.write("b.graphml", GetParam().text);
  EXPECT_EQ(errorOf([&] { importFiles({good, bad}, database_); }), bad + GetParam().complaint);
  EXPECT_EQ(dump(database_), before);
}

TEST_P(MalformedImportTest, LeavesNoDatabaseWhereNoneWas) {
  const std::string bad = directory_.write("b.graphml", GetParam().text);
  errorOf([&] { importFiles({bad}, database_); });
  EXPECT_THAT(directory_.entries(), ElementsAre("b.graphml"));
}

const Malformed kMalformed[] = {
    {"Empty", "", ":1: No document element found"},
    {"NoXml", "hello\nworld", ":2: No document element found"},
    {"CutShort", "<graphml>\n<graph>\n<node id=\"0\">\n<da", ":4: Error parsing start element tag"},
    {"UnclosedElement", "<graphml>\n<graph>\n</graphml>", ":3: Start-end tags mismatch"},
    {"OtherRoot", "<!-- a\nb -->\n<svg/>", ":3: the root element is <svg>, not <graphml>"},
    {"NoGraph", "\n<graphml/>", ":2: there is no <graph>"},
    {"NodeWithoutId", graphml(node("0", {}) + "    <node/>\n"), ":8: <node> has no \"id\""},
    {"DuplicateNode", graphml(node("0", {}) + node("1", {}) + node("0", {})),
     ":9: a second node has the id \"0\""},
    {"DuplicateKey", "<graphml>\n<key id=\"a\"/>\n<key id=\"a\"/><graph/></graphml>",
     ":3: a second <key> has the id \"a\""},
    {"KeyWithoutId", "<graphml>\n<key for=\"node\"/><graph/></graphml>", ":2: <key> has no \"id\""},
    {"UnknownKey", graphml("    <node id=\"0\">\n<data key=\"z\">1</data></node>\n"),
     ":8: no <key> for nodes has the id \"z\""},
    {"DataWithoutKey", graphml("    <node id=\"0\">\n<data>1</data></node>\n"),
     ":8: <data> has no \"key\""},
    {"EdgeFromNowhere", graphml(node("0", {}) + edge("9", "0")),
     ":8: the source \"9\" of an edge is no node of the file"},
    {"EdgeToNowhere", graphml(node("0", {}) + edge("0", "9")),
     ":8: the target \"9\" of an edge is no node of the file"},
    {"EdgeWithoutTarget", graphml(node("0", {}) + "<edge source=\"0\"/>"),
     ":8: <edge> has no \"target\""},
    {"LongitudeNoNumber", graphml(node("0", {}) + node("1", {{"Longitude", "12E"}})),
     ":8: Longitude \"12E\" is not a number"},
    {"LatitudeNoNumber", graphml(node("0", {{"Latitude", "north"}})),
     ":7: Latitude \"north\" is not a number"},
    {"LongitudeNan", graphml(node("0", {{"Longitude", "nan"}})),
     ":7: Longitude \"nan\" is not a number"},
    {"LatitudeBeyondEveryPosition", graphml(node("0", {{"Latitude", "1e300"}})),
     ":7: its place is beyond what a position can hold"},
    {"Hyperedge", graphml(node("0", {}) + "<hyperedge/>"),
     ":8: hyperedges have no counterpart in an inventory"},
    {"NestedGraph", graphml("<node id=\"0\"><graph/></node>"),
     ":7: a graph within a node is not supported"},
    {"BadUtf8", graphml(node("0", {}) + node("1", {{"label", "Z\xFCrich"}})),
     ":8: a byte is not valid UTF-8"},
    {"Utf16", std::string("\xFF\xFE<\0g\0/\0>\0", 10),
     ":1: the file is neither in UTF-8 nor in ISO-8859-1; convert it first"},
};

INSTANTIATE_TEST_SUITE_P(Files, MalformedImportTest, ::testing::ValuesIn(kMalformed),
                         [](const auto& tested) { return tested.param.name; });

TEST(ImportFilesTest, MissingFileIsNamed) {
  const TempDirectory directory;
  EXPECT_EQ(errorOf([&] { importFiles({directory.path("no.graphml")}, directory.path("net.db")); }),
            "cannot read " + directory.path("no.graphml") + ": No such file or directory");
}

TEST(ImportFilesTest, DirectoryIsNoFile) {
  const TempDirectory directory;
  EXPECT_THAT(errorOf([&] { importFiles({directory.path("")}, directory.path("net.db")); }),
              HasSubstr("it is no regular file"));
}

TEST(ImportFilesTest, FileGivenTwiceIsAMistake) {
  const TempDirectory directory;
  const std::string file = directory.write("a.graphml", graphml(""));
  EXPECT_EQ(errorOf([&] {
              importFiles({file, file}, directory.path("net.db"));
            }),
            "file " + file + " is given twice; name it once");
}

}  // namespace
}  // namespace ormasim::testing
