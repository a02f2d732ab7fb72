#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstring>

#include "error_table_fixture.h"
#include "ordinary_user.h"

namespace emf::test {
namespace {

using emf::doubles::openToAll;
using emf::doubles::OrdinaryUser;
using emf::doubles::platform;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

TEST_F(ErrorTableTest, IsOneTableUntilDestroyed) {
  CAEmfMcdbErrorCodeMgr* first = CAEmfMcdbErrorCodeMgr::Instance();
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(CAEmfMcdbErrorCodeMgr::Instance(), first);
}

TEST_F(ErrorTableTest, DestroyFreesTheTableAndTheNextOneIsEmpty) {
  write("a.res", "5=five\n");
  table().Init();
  CAEmfMcdbErrorCodeMgr::Destroy();
  CAEmfMcdbErrorCodeMgr::Destroy();
  EXPECT_EQ(textOf(5), "unknown");
}

TEST_F(ErrorTableTest, EveryLookupIsUnknownBeforeInit) {
  write("a.res", "5=five\n");
  EXPECT_EQ(textOf(5), "unknown");
}

TEST_F(ErrorTableTest, EmptyDirectoryGivesAnEmptyTable) {
  EXPECT_TRUE(table().Init());
  EXPECT_EQ(textOf(0), "unknown");
  EXPECT_EQ(textOf(5), "unknown");
  EXPECT_THAT(platform().log.lines(), IsEmpty());
}

TEST_F(ErrorTableTest, BaseDirectoryIsAskedForBeforeTheLanguage) {
  platform().journal.reset();
  table().Init();
  EXPECT_THAT(platform().journal.events(), ElementsAre("environment", "language"));
}

TEST_F(ErrorTableTest, MissingDirectoryIsSilent) {
  platform().config.environment(environment() + "/nowhere");
  EXPECT_TRUE(table().Init());
  EXPECT_EQ(textOf(5), "unknown");
  EXPECT_THAT(platform().log.lines(), IsEmpty());
  EXPECT_THAT(platform().trace.lines(), IsEmpty());
}

TEST_F(ErrorTableTest, MissingDirectoryLeavesTheTableAsItWas) {
  write("a.res", "5=five\n");
  table().Init();
  platform().config.environment(environment() + "/nowhere");
  EXPECT_TRUE(table().Init());
  EXPECT_EQ(textOf(5), "five");
}

TEST_F(ErrorTableTest, SuffixIsAppendedToTheEnvironmentAsItStands) {
  write("a.res", "5=five\n");
  platform().config.environment(installation_.path() / "agent/.");
  table().Init();
  EXPECT_EQ(textOf(5), "five");
}

TEST_F(ErrorTableTest, LookupIsExact) {
  write("a.res", "5=five\n7=seven\n");
  table().Init();
  EXPECT_EQ(textOf(5), "five");
  EXPECT_EQ(textOf(6), "unknown");
  EXPECT_EQ(textOf(7), "seven");
}

TEST_F(ErrorTableTest, LanguageChoosesTheDirectory) {
  write("a.res", "5=english\n");
  write("a.res", "5=chinese\n", "zh_CN");
  const std::pair<const char*, const char*> kChoices[] = {
      {"zh_CN", "chinese"}, {"en_US", "english"}, {"fr_FR", "english"},      {"", "english"},
      {"zh", "english"},    {"zh_cn", "english"}, {"zh_CN.utf8", "english"},
  };
  for (const auto& [language, text] : kChoices) {
    platform().text.language(language);
    table().Init();
    EXPECT_EQ(textOf(5), text) << language;
  }
}

TEST_F(ErrorTableTest, EveryEntryIsReadWhateverItsName) {
  write("a.res", "1=a\n");
  write("b.txt", "2=b\n");
  write(".hidden", "3=c\n");
  write("..double", "4=d\n");
  write("noext", "5=e\n");
  write("b.res~", "6=f\n");
  table().Init();
  EXPECT_EQ(textOf(1) + textOf(2) + textOf(3) + textOf(4) + textOf(5) + textOf(6), "abcdef");
}

TEST_F(ErrorTableTest, DefaultsFileLosesToEveryOther) {
  write("errcode_ACCESS_TDT.res", "1=default 1\n2=default 2\n");
  for (char name = 'a'; name <= 'z'; ++name) write(std::string(1, name) + ".res", "2=other\n");
  table().Init();
  EXPECT_EQ(textOf(1), "default 1");
  EXPECT_EQ(textOf(2), "other");
}

TEST_F(ErrorTableTest, LaterTextInOneFileWins) {
  write("a.res", "5=first\n6=six\n5=second\n");
  table().Init();
  EXPECT_EQ(textOf(5), "second");
  EXPECT_EQ(textOf(6), "six");
}

TEST_F(ErrorTableTest, SecondInitReplacesTextsAndRemovesNothing) {
  const auto file = write("a.res", "5=old\n6=six\n");
  table().Init();
  write("a.res", "5=new\n");
  table().Init();
  EXPECT_EQ(textOf(5), "new");
  EXPECT_EQ(textOf(6), "six");
}

TEST_F(ErrorTableTest, KeysAreDecimalHexadecimalOrOctal) {
  const std::pair<const char*, unsigned long> kKeys[] = {
      {"16", 16},
      {"0x10", 16},
      {"0X10", 16},
      {"020", 16},
      {"0", 0},
      {"abc", 0},
      {"", 0},
      {"12abc", 12},
      {"08", 0},
      {"0x41180004", 0x41180004},
      {"4294967296", 4294967296},
      {"18446744073709551615", 18446744073709551615U},
      {"99999999999999999999", ~0UL},
      {"+7", 7},
      {"-1", ~0UL},
  };
  for (const auto& [key, code] : kKeys) {
    CAEmfMcdbErrorCodeMgr::Destroy();
    table().LoadFile(write("a.res", std::string(key) + "=text\n"));
    EXPECT_EQ(textOf(code), "text") << key;
  }
}

TEST_F(ErrorTableTest, KeysOfOneCodeAddressOneEntry) {
  write("a.res", "16=first\n0x10=second\n");
  table().Init();
  EXPECT_EQ(textOf(16), "second");
  write("a.res", "16=first\n020=third\n");
  table().Init();
  EXPECT_EQ(textOf(16), "third");
}

TEST_F(ErrorTableTest, LinesWithoutAPairArePassedOver) {
  write("a.res", "# comment\n\nno pair here\n5=five\n   \n6 = six \n7=\n8=last");
  table().Init();
  EXPECT_EQ(textOf(5), "five");
  EXPECT_EQ(textOf(6), "six");
  EXPECT_EQ(textOf(7), "");
  EXPECT_EQ(textOf(8), "last");
  EXPECT_EQ(textOf(0), "unknown");
}

TEST_F(ErrorTableTest, TextsAreDataAndMayBeLong) {
  write("a.res", "5=%s%n%d\n6=" + std::string(5000, 'x') + "\n7=seven\n");
  table().Init();
  EXPECT_EQ(textOf(5), "%s%n%d");
  EXPECT_EQ(textOf(6), std::string(2047, 'x'));
  EXPECT_EQ(textOf(7), "seven");
}

TEST_F(ErrorTableTest, ManyEntriesAreHeld) {
  std::string content;
  for (int code = 0; code < 20000; ++code) {
    content += std::to_string(code) + "=text " + std::to_string(code) + "\n";
  }
  write("a.res", content);
  table().Init();
  EXPECT_EQ(textOf(0), "text 0");
  EXPECT_EQ(textOf(19999), "text 19999");
}

TEST_F(ErrorTableTest, LinkToAFileIsFollowed) {
  std::filesystem::create_symlink(installation_.write("elsewhere/real", "5=five\n"),
                                  installation_.path() / "etc/nbires/en_US/link.res");
  table().Init();
  EXPECT_EQ(textOf(5), "five");
  EXPECT_THAT(platform().log.lines(), IsEmpty());
}

TEST_F(ErrorTableTest, MissingFileIsReportedUnderThePathGiven) {
  table().LoadFile("/no/such/../such/directory/file.res");
  EXPECT_THAT(platform().log.lines(),
              ElementsAre(ReportsUnopened("/no/such/../such/directory/file.res")));
  EXPECT_THAT(platform().trace.lines(), IsEmpty());
}

TEST_F(ErrorTableTest, DanglingLinkIsReportedAndTheOthersAreRead) {
  write("a.res", "5=five\n");
  write("z.res", "6=six\n");
  std::filesystem::create_symlink(installation_.path() / "gone/below/file.res",
                                  installation_.path() / "etc/nbires/en_US/m.res");
  EXPECT_TRUE(table().Init());
  EXPECT_EQ(textOf(5), "five");
  EXPECT_EQ(textOf(6), "six");
  EXPECT_THAT(platform().log.lines(), ElementsAre(ReportsUnopened(pathOf("m.res"))));
}

TEST_F(ErrorTableTest, ReportThatFailsDoesNotStopTheLoad) {
  write("a.res", "5=five\n");
  write("z.res", "6=six\n");
  std::filesystem::create_symlink("gone", installation_.path() / "etc/nbires/en_US/m.res");
  platform().log.linesThrow();
  EXPECT_TRUE(table().Init());
  EXPECT_EQ(textOf(5), "five");
  EXPECT_EQ(textOf(6), "six");
}

TEST_F(ErrorTableTest, LinkToItselfIsReported) {
  std::filesystem::create_symlink("loop.res", installation_.path() / "etc/nbires/en_US/loop.res");
  EXPECT_TRUE(table().Init());
  EXPECT_THAT(platform().log.lines(), ElementsAre(ReportsUnopened(pathOf("loop.res"))));
}

TEST_F(ErrorTableTest, EntryThatCannotBeOpenedIsReported) {
  write("a.res", "5=five\n");
  // A socket can be opened by nobody, the superuser included.
  const std::string path = (installation_.path() / "etc/nbires/en_US/s").string();
  sockaddr_un address = {};
  address.sun_family = AF_UNIX;
  ASSERT_LT(path.size(), sizeof address.sun_path);
  std::memcpy(address.sun_path, path.c_str(), path.size());
  const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
  ASSERT_EQ(::bind(socket, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
  EXPECT_TRUE(table().Init());
  ::close(socket);
  EXPECT_EQ(textOf(5), "five");
  EXPECT_THAT(platform().log.lines(), ElementsAre(ReportsUnopened(pathOf("s"))));
}

TEST_F(ErrorTableTest, FileWithoutPermissionIsReported) {
  write("a.res", "5=five\n");
  const auto closed = write("b.res", "6=six\n");
  openToAll(installation_.path());
  std::filesystem::permissions(closed, std::filesystem::perms::none);
  const OrdinaryUser user;
  if (::eaccess(closed.c_str(), R_OK) == 0) GTEST_SKIP() << "this user may read every file";
  EXPECT_TRUE(table().Init());
  EXPECT_EQ(textOf(5), "five");
  EXPECT_EQ(textOf(6), "unknown");
  EXPECT_THAT(platform().log.lines(), ElementsAre(ReportsUnopened(pathOf("b.res"))));
}

TEST_F(ErrorTableTest, DirectoryWithoutPermissionIsSilent) {
  write("a.res", "5=five\n");
  const auto directory = installation_.path() / "etc/nbires/en_US";
  openToAll(installation_.path());
  std::filesystem::permissions(directory, std::filesystem::perms::none);
  bool mayRead = false;
  {
    const OrdinaryUser user;
    mayRead = ::eaccess(directory.c_str(), R_OK) == 0;
    EXPECT_TRUE(table().Init());
  }
  std::filesystem::permissions(directory, std::filesystem::perms::all);
  if (mayRead) GTEST_SKIP() << "this user may read every directory";
  EXPECT_EQ(textOf(5), "unknown");
  EXPECT_THAT(platform().log.lines(), IsEmpty());
}

TEST_F(ErrorTableTest, DirectoryAmongTheFilesHoldsNothing) {
  write("a.res", "5=five\n");
  write("sub/b.res", "6=six\n");
  EXPECT_TRUE(table().Init());
  EXPECT_EQ(textOf(5), "five");
  EXPECT_EQ(textOf(6), "unknown");
}

TEST_F(ErrorTableTest, PathBeyondTheSystemsLimitIsReported) {
  const std::string path = "/" + std::string(8000, 'p');
  table().LoadFile(path);
  EXPECT_THAT(platform().log.lines(), ElementsAre(ReportsUnopened(path)));
}

TEST_F(ErrorTableTest, EmptyPathIsReported) {
  table().LoadFile(write("a.res", "5=five\n"));
  table().LoadFile("");  // and not the file before once more
  EXPECT_THAT(platform().log.lines(), ElementsAre(ReportsUnopened("")));
}

TEST_F(ErrorTableTest, InterfaceGivesTheTablesTexts) {
  write("a.res", "0x41180004=not there\n");
  ErrorCodeBufIfImpl errors;
  EXPECT_EQ(errors.GetIFName(), "ErrorCodeBufIfImpl");
  EXPECT_EQ(errors.IsValid(), 1);
  std::string text = "left over";
  errors.GetErrorInfo(text, 0x41180004);
  EXPECT_EQ(text, "unknown");
  table().Init();
  errors.GetErrorInfo(text, 0x41180004);
  EXPECT_EQ(text, "not there");
  errors.GetErrorInfo(text, 1);
  EXPECT_EQ(text, "unknown");
}

TEST_F(ErrorTableTest, EmfInterfaceComesUpAndReleasesTheEngineItMade) {
  EXPECT_TRUE(CAEmfInterface::Init());
  CAEmfInterface::Fini();
  EXPECT_THAT(platform().database.calls(), ElementsAre("Instance database-double", "Destroy"));
}

}  // namespace
}  // namespace emf::test
