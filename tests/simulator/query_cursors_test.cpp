#include "query_cursors.h"

#include <gmock/gmock.h>

#include <thread>
#include <vector>

namespace ormasim::testing {
namespace {

using std::chrono::milliseconds;

class QueryCursorsTest : public ::testing::Test {
 protected:
  // The device of the cursor, or 0 when there is none.
  std::int64_t taken(const std::string& id) {
    const auto cursor = cursors_.take(id);
    return cursor ? cursor->device : 0;
  }

  QueryCursors::Clock::time_point now_{};
  QueryCursors cursors_{milliseconds(100), [this] { return now_; }};
};

TEST_F(QueryCursorsTest, CursorIsGivenBackOnce) {
  const std::string id = cursors_.open({7, 20, 300});
  const auto cursor = cursors_.take(id);
  ASSERT_TRUE(cursor);
  EXPECT_EQ(cursor->device, 7);
  EXPECT_EQ(cursor->after, 20);
  EXPECT_EQ(cursor->limit, 300);
  EXPECT_FALSE(cursors_.take(id));
}

TEST_F(QueryCursorsTest, CursorsAreKeptApart) {
  const std::string first = cursors_.open({1, 0, 1});
  const std::string second = cursors_.open({2, 0, 1});
  EXPECT_NE(first, second);
  EXPECT_EQ(taken(second), 2);
  EXPECT_EQ(taken(first), 1);
}

TEST_F(QueryCursorsTest, CursorExpiresAtTheEndOfItsLife) {
  const std::string first = cursors_.open({1, 0, 1});
  const std::string second = cursors_.open({2, 0, 1});
  now_ += milliseconds(99);
  EXPECT_EQ(taken(first), 1);
  now_ += milliseconds(1);
  EXPECT_EQ(taken(second), 0);
}

TEST_F(QueryCursorsTest, OldestOfTooManyGoes) {
  const std::string first = cursors_.open({1, 0, 1});
  const std::string second = cursors_.open({2, 0, 1});
  for (int i = 0; i < 999; ++i) cursors_.open({3, 0, 1});
  EXPECT_EQ(taken(first), 0);
  EXPECT_EQ(taken(second), 2);
}

TEST_F(QueryCursorsTest, AllCanBeEnded) {
  const std::string id = cursors_.open({1, 0, 1});
  cursors_.expireAll();
  EXPECT_EQ(taken(id), 0);
  EXPECT_EQ(taken(cursors_.open({2, 0, 1})), 2);
}

TEST_F(QueryCursorsTest, TextsThatAreNoIdsAreNone) {
  cursors_.open({1, 0, 1});
  for (const char* text :
       {"", "q", "1", "q01", "q1 ", " q1", "Q1", "q-1", "q18446744073709551616"}) {
    EXPECT_EQ(taken(text), 0) << text;
  }
  EXPECT_EQ(taken("q1"), 1);
}

TEST_F(QueryCursorsTest, ThreadsTakeEachCursorOnce) {
  std::vector<std::string> ids;
  for (int i = 0; i < 500; ++i) ids.push_back(cursors_.open({1, 0, 1}));
  std::vector<int> taken(4);
  std::vector<std::thread> threads;
  for (int& mine : taken) {
    threads.emplace_back([&] {
      for (const std::string& id : ids) mine += cursors_.take(id) ? 1 : 0;
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(taken[0] + taken[1] + taken[2] + taken[3], 500);
}

}  // namespace
}  // namespace ormasim::testing
