// The log object of the table's reports is cached once a process: this program starts without a
// log service.
#include "error_table_fixture.h"

namespace emf::test {
namespace {

using emf::doubles::platform;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST_F(ErrorTableTest, ReportsAreLostUntilThereIsALogServiceAndNeverStopTheLoad) {
  write("a.res", "5=five\n");
  std::filesystem::create_symlink("gone", installation_.path() / "etc/nbires/en_US/m.res");
  platform().log.absent();
  EXPECT_TRUE(table().Init());
  EXPECT_EQ(textOf(5), "five");
  EXPECT_THAT(platform().bundles.questions(), ElementsAre("GetBundles"));

  write("a.res", "5=again\n");
  platform().log.throwing();
  EXPECT_TRUE(table().Init());
  EXPECT_EQ(textOf(5), "again");
  EXPECT_THAT(platform().log.lines(), IsEmpty());

  platform().log.present();
  EXPECT_TRUE(table().Init());
  EXPECT_THAT(platform().log.lines(), ElementsAre(ReportsUnopened(pathOf("m.res"))));
}

}  // namespace
}  // namespace emf::test
