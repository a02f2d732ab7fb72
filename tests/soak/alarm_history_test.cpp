// Answers that list alarms while others come and go.
#include "alarm_history.h"

#include <gmock/gmock.h>
#include <sqlite3.h>

#include <fstream>
#include <sstream>

#include "temp_directory.h"

namespace soak {
namespace {

using testing::HasSubstr;

void execute(const std::filesystem::path& file, const std::string& statements) {
  sqlite3* handle = nullptr;
  ASSERT_EQ(sqlite3_open(file.c_str(), &handle), SQLITE_OK);
  EXPECT_EQ(sqlite3_exec(handle, statements.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
      << sqlite3_errmsg(handle);
  sqlite3_close(handle);
}

class Alarms : public testing::Test {
 protected:
  Alarms() {
    std::ostringstream layout;
    layout << std::ifstream(EMF_INVENTORY_LAYOUT).rdbuf();
    execute(file_, layout.str() +
                       "INSERT INTO subnet VALUES ('102','102',101,'/','r',1,0,'','',0,0);"
                       "INSERT INTO device VALUES (2,'NE=2','2','ne','102',1,3,4,'','n','',1,'',"
                       "'','',0,0);"
                       "INSERT INTO alarm_definition VALUES (0,3,9,1,2,4,'name','');");
    raise(1, 5);
  }

  void raise(int first, int last) {
    for (int serial = first; serial <= last; ++serial) {
      const std::string number = std::to_string(serial);
      execute(file_, "INSERT INTO alarm VALUES (" + number + ",2,3,9,1,4," + number +
                         ",0,'','NE=2','p','')");
    }
  }

  static Rows rows(std::initializer_list<int> serials) {
    Rows all;
    for (const int serial : serials) {
      all.push_back("2|196612|3|1|4|2|9|1|1970-01-01T00:00:0" + std::to_string(serial) +
                    "Z|NE=2|p|1");
    }
    return all;
  }

  emf::doubles::TempDirectory directory_;
  const std::filesystem::path file_ = directory_.path() / "net.db";
};

TEST_F(Alarms, ThoseThatStandAreTheRightAnswer) {
  AlarmHistory history(file_, 100);
  const auto last = history.mark();
  EXPECT_EQ(last, 5);
  EXPECT_EQ(history.judge(last, rows({1, 2, 3, 4, 5}), true).kind, Verdict::kRight);
}

TEST_F(Alarms, MissingTwiceListedAndUnknownOnesAreWrong) {
  AlarmHistory history(file_, 100);
  const auto last = history.mark();
  EXPECT_THAT(history.judge(last, rows({1, 2, 4, 5}), true).difference,
              HasSubstr("the alarm 3 is missing among 4"));
  for (const Rows& wrong : {rows({1, 2, 3, 4}), rows({2, 3, 4, 5}), rows({1, 2, 2, 3, 4, 5}),
                            rows({1, 3, 2, 4, 5}), rows({1, 2, 3, 4, 5, 9}), rows({})}) {
    EXPECT_EQ(history.judge(last, wrong, true).kind, Verdict::kWrong) << wrong.size();
  }
}

TEST_F(Alarms, ThoseRaisedOrRemovedMeanwhileMayBeThereOrNot) {
  AlarmHistory history(file_, 100);
  const auto last = history.mark();
  raise(6, 7);
  execute(file_, "DELETE FROM alarm WHERE serial_no < 3");
  for (const Rows& right :
       {rows({3, 4, 5}), rows({1, 2, 3, 4, 5, 6, 7}), rows({1, 3, 4, 5, 6}), rows({2, 3, 4, 5})}) {
    EXPECT_EQ(history.judge(last, right, true).kind, Verdict::kRight) << right.size();
  }
  EXPECT_EQ(history.judge(last, rows({4, 5}), true).kind, Verdict::kWrong);
}

TEST_F(Alarms, AnswerThatEndedEarlyHoldsTheFirstOnes) {
  AlarmHistory history(file_, 100);
  const auto last = history.mark();
  EXPECT_EQ(history.judge(last, rows({}), false).kind, Verdict::kFailed);
  EXPECT_EQ(history.judge(last, rows({1, 2}), false).kind, Verdict::kFailed);
  EXPECT_EQ(history.judge(last, rows({1, 3}), false).kind, Verdict::kWrong);
}

TEST_F(Alarms, OldestAreForgotten) {
  AlarmHistory history(file_, 3);
  EXPECT_EQ(history.judge(history.mark(), rows({1, 2, 3, 4, 5}), true).kind, Verdict::kWrong);
}

}  // namespace
}  // namespace soak
