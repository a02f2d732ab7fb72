// Attributes by compatible ids, on whichever database the program is built for.
#include <gmock/gmock.h>

#include "inventory_fixture.h"

namespace dao::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr const char* kPrefix = "[CEmfCommDBEngine::GetResByIID] ";

// Device 2 and a frame below it, -5 as a short id, have attributes; device 3 has none.
class ResourceAttributes : public InventoryTest {
 protected:
  void SetUp() override {
    InventoryTest::SetUp();
    if (IsSkipped()) return;
    database().run(attribute("2", "2", "60", "x") + attribute("2", "2", "1", "RX-7") +
                   attribute("2", "2", "59", "Größe 框") +
                   attribute("4611686018427387899", "-5", "2", ""));
  }

  static std::string attribute(const std::string& resource, const std::string& shortId,
                               const std::string& number, const std::string& value) {
    return "INSERT INTO resource_attribute (res_id, short_id, number, value) VALUES (" + resource +
           ", " + shortId + ", " + number + ", '" + value + "');";
  }

  // "id: number=value …" of each resource.
  std::vector<std::string> read(const std::list<int>& ids, int expected,
                                const std::list<int>& numbers = {}, int flag = 1) {
    std::map<int, _SResProperty> found;
    EXPECT_EQ(engine().GetResByIID(ids, numbers, found, flag), expected);
    std::vector<std::string> texts;
    for (const auto& [id, properties] : found) {
      texts.push_back(std::to_string(id) + ":");
      for (const auto& [number, value] : properties.attributes) {
        texts.back() += " " + std::to_string(number) + "=" + value;
      }
    }
    return texts;
  }
};

TEST_F(ResourceAttributes, AreThoseOfTheTableByNumber) {
  EXPECT_THAT(read({2}, 1), ElementsAre("2: 1=RX-7 59=Größe 框 60=x"));
  EXPECT_THAT(read({-5}, 1), ElementsAre("-5: 2="));
  EXPECT_THAT(loggedTexts(), IsEmpty());
}

TEST_F(ResourceAttributes, SeveralAreReadAtOnceAndUnknownIdsAreMissing) {
  EXPECT_THAT(read({7, 3, -5, 2, 2}, 3), ElementsAre("-5: 2=", "2: 1=RX-7 59=Größe 框 60=x", "3:"));
  EXPECT_THAT(read({7}, 0), IsEmpty());
  EXPECT_THAT(read({}, 0), IsEmpty());
  EXPECT_THAT(loggedTexts(), IsEmpty());
}

TEST_F(ResourceAttributes, LastDeviceHasANegativeId) {
  EXPECT_THAT(read({-1}, 1), ElementsAre("-1:"));
}

TEST_F(ResourceAttributes, OnlyWantedNumbersAreGiven) {
  EXPECT_THAT(read({2, -5}, 2, {60, 1, 99}), ElementsAre("-5:", "2: 1=RX-7 60=x"));
}

TEST_F(ResourceAttributes, NoneAreGivenWithoutTheFlag) {
  EXPECT_THAT(read({2, -5}, 2, {}, 0), ElementsAre("-5:", "2:"));
}

TEST_F(ResourceAttributes, EntryIsReplacedAndOthersStay) {
  std::map<int, _SResProperty> found;
  found[2].attributes.emplace_back(9, "old");
  found[8].attributes.emplace_back(9, "old");
  EXPECT_EQ(engine().GetResByIID({2}, {1}, found, 1), 1);
  EXPECT_EQ(found[2].attributes, (std::list<std::pair<int, std::string>>{{1, "RX-7"}}));
  EXPECT_EQ(found[8].attributes, (std::list<std::pair<int, std::string>>{{9, "old"}}));
}

TEST_F(ResourceAttributes, IdOfTwoResourcesFindsNoneAndSaysSo) {
  database().run(attribute("5764607523034234875", "-5", "2", "other"));
  EXPECT_THAT(read({2, -5}, 1), ElementsAre("2: 1=RX-7 59=Größe 框 60=x"));
  EXPECT_THAT(loggedTexts(), ElementsAre(std::string(kPrefix) +
                                         "id -5 is that of several resources, and none is taken"));
}

TEST_F(ResourceAttributes, ElementComesBeforeWhatEndsInItsNumber) {
  database().run(attribute("4611686018427387906", "2", "1", "other") +
                 attribute("4611686018427387907", "3", "1", "other"));
  EXPECT_THAT(read({2, 3}, 2), ElementsAre("2: 1=RX-7 59=Größe 框 60=x", "3:"));
  EXPECT_THAT(loggedTexts(), IsEmpty());
}

TEST_F(ResourceAttributes, ManyIdsAreReadInBatches) {
  std::string statements;
  std::list<int> ids;
  for (int id = 1; id <= 1203; ++id) {
    ids.push_back(-1000 - id);
    if (id % 3 != 0) {
      statements += attribute(std::to_string(4611686018427387904 + id), std::to_string(-1000 - id),
                              "1", std::to_string(id));
    }
  }
  database().run(statements);
  std::map<int, _SResProperty> found;
  ASSERT_EQ(engine().GetResByIID(ids, {}, found, 1), 802);
  for (const auto& [id, properties] : found) {
    ASSERT_EQ(properties.attributes.size(), 1u);
    EXPECT_EQ(properties.attributes.front().second, std::to_string(-1000 - id));
  }
}

TEST_F(ResourceAttributes, MissingTableFailsTheReadAndLeavesTheMap) {
  database().run("DROP TABLE resource_attribute");
  EXPECT_THAT(read({2}, -1), IsEmpty());
  EXPECT_THAT(loggedTexts(), ElementsAre(HasSubstr("resource_attribute")));
}

TEST_F(ResourceAttributes, NumberBeyondItsRangeFailsTheReadWithItsColumn) {
  database().run(
      "ALTER TABLE resource_attribute RENAME TO narrow; CREATE TABLE resource_attribute "
      "(res_id BIGINT, short_id BIGINT, number BIGINT, value TEXT)");
  database().run(attribute("2", "2", "2147483648", "wide"));
  EXPECT_THAT(read({2}, -1), IsEmpty());
  EXPECT_THAT(loggedTexts(),
              ElementsAre(std::string(kPrefix) + "column number: 2147483648 is not between "
                                                 "-2147483648 and 2147483647"));
}

}  // namespace
}  // namespace dao::test
