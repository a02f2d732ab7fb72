#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <map>
#include <string>
#include <type_traits>

#include "emfresinterface.h"
#include "ordinary_user.h"
#include "platform_test.h"
#include "temp_directory.h"

namespace emf::test {
namespace {

using emf::doubles::openToAll;
using emf::doubles::OrdinaryUser;
using emf::doubles::platform;
using emf::doubles::TempDirectory;
using ::testing::ElementsAre;
using ::testing::FieldsAre;
using ::testing::Gt;
using ::testing::IsEmpty;

namespace fs = std::filesystem;
using Types = std::map<int, std::string>;

static_assert(std::is_same_v<decltype(EMFResMgrI::getAccessNETypeList), std::int64_t(Types&)>);

constexpr char kFile[] = "etc/oss_cfg/nbi/corba/conf/ii_orma_corbaagent_bundle/devicetype.cfg";
const Types kBefore = {{3, "before"}};

class AccessNeTypes : public emf::doubles::PlatformTest {
 protected:
  AccessNeTypes() { platform().config.rootPath(root_.path()); }

  // The list of a file with that content, over one that is filled already.
  Types typesOf(const std::string& content) {
    root_.write(kFile, content);
    return types();
  }

  static Types types() {
    Types types = kBefore;
    EXPECT_EQ(EMFResMgrI::getAccessNETypeList(types), 0);
    return types;
  }

  // "ACCESS=" with a value as long as needed, ending in `last`.
  static std::string lineOf(std::size_t length, const std::string& last) {
    const std::string start = "ACCESS=";
    return start + std::string(length - start.size() - last.size(), ' ') + last;
  }

  fs::path file() const { return root_.path() / kFile; }

  TempDirectory root_;
};

TEST_F(AccessNeTypes, TypesUpTo85AreShifted) {
  EXPECT_EQ(typesOf("ACCESS=1,85,86\n"),
            (Types{{0xFFF4D59, "ACCESS"}, {0xFFF4DAD, "ACCESS"}, {86, "ACCESS"}}));
}

TEST_F(AccessNeTypes, ZeroAndNegativeTypesStay) {
  EXPECT_EQ(typesOf("ACCESS=0,-1,2147483647\n"),
            (Types{{0, "ACCESS"}, {-1, "ACCESS"}, {2147483647, "ACCESS"}}));
}

TEST_F(AccessNeTypes, KeyThatIsThereStays) {
  EXPECT_EQ(typesOf("ACCESS=1,268389721,1\n"), (Types{{268389721, "ACCESS"}}));
}

TEST_F(AccessNeTypes, KeyEndsAtTheFirstEqualsSign) {
  EXPECT_EQ(typesOf("ACCESS=100,x=3,200\n"), (Types{{100, "ACCESS"}, {200, "ACCESS"}}));
}

TEST_F(AccessNeTypes, FirstAccessLineCounts) {
  EXPECT_EQ(typesOf("OTHER=1\nACCESS=100\nACCESS=200\n"), (Types{{100, "ACCESS"}}));
}

TEST_F(AccessNeTypes, AccessLineWithoutAValueEndsTheReading) {
  EXPECT_EQ(typesOf("ACCESS\nACCESS=200\n"), Types());
  EXPECT_EQ(typesOf("ACCESS=\nACCESS=200\n"), Types());
}

TEST_F(AccessNeTypes, CommentedLineIsSkipped) {
  EXPECT_EQ(typesOf("#ACCESS=100\n# ACCESS=101\nACCESS=200\n"), (Types{{200, "ACCESS"}}));
}

TEST_F(AccessNeTypes, KeyIsSpelledExactly) {
  for (const char* line : {"access=1", " ACCESS=1", "ACCESS =1", "ACCESSES=1", "ACCES=1", "=1",
                           "X=ACCESS=1", "\tACCESS=1"}) {
    EXPECT_EQ(typesOf(std::string(line) + "\n"), Types()) << line;
  }
}

TEST_F(AccessNeTypes, FileWithoutAnAccessLineClearsTheList) {
  for (const char* content : {"", "\n", "\n\n", "# nothing\n#\n", "OTHER=1\n", "OTHER", "#"}) {
    EXPECT_EQ(typesOf(content), Types()) << content;
  }
}

TEST_F(AccessNeTypes, CarriageReturnsAreNoPartOfTheNumbers) {
  EXPECT_EQ(typesOf("# types\r\n\r\nOTHER=1\r\nACCESS=100,200\r\n"),
            (Types{{100, "ACCESS"}, {200, "ACCESS"}}));
}

TEST_F(AccessNeTypes, CarriageReturnIsPartOfTheLine) {
  EXPECT_EQ(typesOf("ACCESS\r\nACCESS=200\r\n"), (Types{{200, "ACCESS"}}));
  EXPECT_EQ(typesOf(lineOf(509, "100") + "\r\n"), (Types{{100, "ACCESS"}}));
  EXPECT_EQ(typesOf(lineOf(510, "100") + "\r\nACCESS=200\r\n"), (Types{{200, "ACCESS"}}));
}

TEST_F(AccessNeTypes, LastLineNeedsNoEnd) {
  EXPECT_EQ(typesOf("OTHER=1\nACCESS=100"), (Types{{100, "ACCESS"}}));
  EXPECT_EQ(typesOf(lineOf(510, "100")), (Types{{100, "ACCESS"}}));
}

TEST_F(AccessNeTypes, LineOfTheGreatestLengthIsRead) {
  EXPECT_EQ(typesOf(lineOf(510, "100") + "\n"), (Types{{100, "ACCESS"}}));
  EXPECT_THAT(platform().trace.texts(), IsEmpty());
}

TEST_F(AccessNeTypes, LongerLineIsTracedAndReadingGoesOn) {
  for (const std::size_t length : {511U, 512U, 1021U, 1022U, 100000U}) {
    platform().trace.reset();
    EXPECT_EQ(typesOf("#\n\n" + lineOf(length, "7") + "\nACCESS=100\n"), (Types{{100, "ACCESS"}}))
        << length;
    EXPECT_THAT(platform().trace.lines(),
                ElementsAre(FieldsAre("TaDebugWithPara", 1, "emfresinterface", "unknown", Gt(0),
                                      "EMFResMgrI::getAccessNETypeList line 3 of devicetype.cfg "
                                      "is longer than 510 bytes and passed over")))
        << length;
  }
}

TEST_F(AccessNeTypes, LongerLineAtTheEndOfTheFileEndsTheReading) {
  for (const std::size_t length : {511U, 5000U}) {
    EXPECT_EQ(typesOf(lineOf(length, "7")), Types()) << length;
  }
}

TEST_F(AccessNeTypes, ManyLongLinesEndToo) {
  std::string content;
  for (int i = 0; i < 1000; ++i) content += std::string(600, 'x') + "\n";
  EXPECT_EQ(typesOf(content + "ACCESS=100"), (Types{{100, "ACCESS"}}));
}

TEST_F(AccessNeTypes, NulBytesEndNothingButTheirValue) {
  EXPECT_EQ(typesOf(std::string("A\0B=1\nACCESS=100\0,200\n", 22)), (Types{{100, "ACCESS"}}));
}

TEST_F(AccessNeTypes, RootMayEndInOneSeparator) {
  root_.write(kFile, "ACCESS=100\n");
  for (const char* end : {"", "/", "\\"}) {
    platform().config.rootPath(root_.path().string() + end);
    EXPECT_EQ(types(), (Types{{100, "ACCESS"}})) << end;
  }
}

TEST_F(AccessNeTypes, OnlyOneSeparatorIsDropped) {
  root_.write(kFile, "ACCESS=100\n");
  platform().config.rootPath(root_.path().string() + "\\\\");
  EXPECT_EQ(types(), kBefore);
}

TEST_F(AccessNeTypes, WithoutARootNothingChanges) {
  platform().config.rootPath("");
  EXPECT_EQ(types(), kBefore);
}

TEST_F(AccessNeTypes, MissingFileChangesNothing) {
  EXPECT_EQ(types(), kBefore);
  fs::create_directories(file().parent_path());
  EXPECT_EQ(types(), kBefore);
  platform().config.rootPath("/nonexistent");
  EXPECT_EQ(types(), kBefore);
}

// The path as far as it resolves is a file here, and must not be read in its place.
TEST_F(AccessNeTypes, PathThroughAFileChangesNothing) {
  root_.write("etc/oss_cfg", "ACCESS=100\n");
  EXPECT_EQ(types(), kBefore);
}

TEST_F(AccessNeTypes, LinkIsFollowed) {
  const fs::path target = root_.write("elsewhere.cfg", "ACCESS=100\n");
  fs::create_directories(file().parent_path());
  fs::create_symlink(target, file());
  EXPECT_EQ(types(), (Types{{100, "ACCESS"}}));
}

TEST_F(AccessNeTypes, LinkThatLeadsNowhereChangesNothing) {
  fs::create_directories(file().parent_path());
  fs::create_symlink("missing", file());
  EXPECT_EQ(types(), kBefore);
  fs::remove(file());
  fs::create_symlink(file(), file());  // a loop
  EXPECT_EQ(types(), kBefore);
}

// None of these is a text file: reading one would fail, wait or never end.
TEST_F(AccessNeTypes, DirectoryFifoOrDeviceChangesNothing) {
  fs::create_directories(file());
  EXPECT_EQ(types(), kBefore);
  fs::remove(file());
  ASSERT_EQ(::mkfifo(file().c_str(), 0600), 0);
  EXPECT_EQ(types(), kBefore);
  fs::remove(file());
  fs::create_symlink("/dev/zero", file());
  EXPECT_EQ(types(), kBefore);
}

TEST_F(AccessNeTypes, UnreadableFileChangesNothing) {
  root_.write(kFile, "ACCESS=100\n");
  openToAll(root_.path());
  fs::permissions(file(), fs::perms::none);
  const OrdinaryUser user;
  ASSERT_EQ(::eaccess(file().c_str(), F_OK), 0);
  if (::eaccess(file().c_str(), R_OK) == 0) GTEST_SKIP() << "this user may read every file";
  EXPECT_EQ(types(), kBefore);
}

TEST_F(AccessNeTypes, PathTooLongChangesNothing) {
  platform().config.rootPath(std::string(5000, 'x'));
  EXPECT_EQ(types(), kBefore);
}

TEST_F(AccessNeTypes, EveryCallReadsTheFileAfresh) {
  EXPECT_EQ(typesOf("ACCESS=100\n"), (Types{{100, "ACCESS"}}));
  EXPECT_EQ(typesOf("ACCESS=200\n"), (Types{{200, "ACCESS"}}));
}

TEST_F(AccessNeTypes, DescriptorsAreGivenBack) {
  root_.write(kFile, "ACCESS=100\n");
  const auto openDescriptors = [] {
    return std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator());
  };
  types();
  const auto before = openDescriptors();
  for (int i = 0; i < 10; ++i) types();
  EXPECT_EQ(openDescriptors(), before);
}

}  // namespace
}  // namespace emf::test
