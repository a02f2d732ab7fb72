// The resource commands, against the database read for itself.
#include <gmock/gmock.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <string>

#include "documents.h"
#include "resource_ids.h"
#include "world.h"

namespace systemtest {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

// The elements that are looked at.
constexpr int kFirst = 2;
constexpr int kLast = 11;
const std::string kTen = "BETWEEN 2 AND 11";

std::string iidText(std::int64_t id) { return std::to_string(iidOf(id)); }

// The records alone, in an order of their own.
Rows sorted(Rows rows) {
  rows.erase(rows.begin());
  std::sort(rows.begin(), rows.end());
  return rows;
}

class Resources : public World {
 protected:
  Resources() { serve(); }

  Rows query(std::vector<std::string> words) {
    words.insert(words.begin(), {"--format", "csv"});
    const Outcome outcome = agent(words);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    return rowsOf("csv", outcome.out);
  }

  Rows inventory(const std::string& statement) { return Inventory(database_).rows(statement); }
};

TEST_F(Resources, EverythingBelowTenElementsHasItsLabelTypeAndId) {
  ASSERT_THAT(inventory("SELECT res_id FROM resource WHERE dev_id " + kTen),
              SizeIs(testing::Gt(1000U)));
  for (int element = kFirst; element <= kLast; ++element) {
    const std::string id = std::to_string(element);
    const Rows tree = query({"res", "tree", id});
    ASSERT_EQ(tree.front(),
              (std::vector<std::string>{"name", "resMainTypeID", "resSubTypeID", "iid", "resIDs"}));
    Rows expected = {{}};
    for (const auto& row : inventory("SELECT name, main_type, sub_type, native_id, res_id FROM "
                                     "resource WHERE dev_id = " +
                                     id)) {
      EXPECT_EQ(row[4], std::to_string(idOf(row[3])));
      expected.push_back({row[0], row[1], row[2], iidText(idOf(row[3])), pathOf(row[3])});
    }
    for (const auto& row : inventory("SELECT name, main_type * 65536 + sub_type FROM device WHERE "
                                     "dev_id = " +
                                     id)) {
      expected.push_back({row[0], "1", row[1], iidText(element), id});
    }
    EXPECT_EQ(sorted(tree), sorted(expected)) << element;
  }
}

// In a table the depth shows what lies below what.
TEST_F(Resources, TreeShowsEachResourceBelowWhatHoldsIt) {
  const Outcome outcome = agent({"res", "tree", "2"});
  ASSERT_EQ(outcome.status, 0) << outcome.err;
  std::map<std::string, std::string> parents;
  for (const auto& row : inventory("SELECT res_id, parent_id FROM resource WHERE dev_id = 2")) {
    parents[iidText(std::stoll(row[0]))] = iidText(std::stoll(row[1]));
  }
  ASSERT_FALSE(parents.empty());
  std::vector<std::string> above;  // the iids on the way to the last line
  std::size_t seen = 0;
  const Rows rows = rowsOf("table", outcome.out);
  std::istringstream lines(outcome.out);
  std::string line;
  std::getline(lines, line);
  std::getline(lines, line);
  for (std::size_t i = 1; std::getline(lines, line) && i < rows.size(); ++i) {
    const std::size_t depth = line.find_first_not_of(' ') / 2;
    const std::string& iid = rows[i][3];
    ASSERT_LE(depth, above.size());
    above.resize(depth);
    if (depth > 0) {
      EXPECT_EQ(parents[iid], above.back()) << line;
      ++seen;
    }
    above.push_back(iid);
  }
  EXPECT_EQ(seen, parents.size());
}

TEST_F(Resources, LabelsOfEverythingBelowTenElements) {
  std::string names;
  Rows expected = {{}};
  for (const auto& row : inventory("SELECT native_id, name, main_type, sub_type FROM resource "
                                   "WHERE dev_id " +
                                   kTen + " ORDER BY res_id")) {
    names += row[0] + "\r\n";
    expected.push_back({row[0], "0", row[1], row[2], row[3]});
  }
  for (const auto& row : inventory("SELECT native_id, name, main_type * 65536 + sub_type FROM "
                                   "device WHERE dev_id " +
                                   kTen)) {
    names += row[0] + "\n";
    expected.push_back({row[0], "0", row[1], "1", row[2]});
  }
  const Rows labels = query({"res", "labels", "--from", directory_.write("names", names).string()});
  EXPECT_EQ(labels.front(),
            (std::vector<std::string>{"resDN", "resID", "label", "resMainTypeID", "resSubTypeID"}));
  EXPECT_EQ(sorted(labels), sorted(expected));
}

TEST_F(Resources, LabelsAreGroupedByKind) {
  const std::string port =
      inventory("SELECT native_id FROM resource WHERE dev_id = 2 AND main_type = 6 LIMIT 1")[0][0];
  const Rows labels = query({"res", "labels", "NE=3", "NE=2,FR=0", port, "NE=99999"});
  ASSERT_THAT(labels, SizeIs(4));
  EXPECT_EQ(labels[1][0], port);
  EXPECT_EQ(labels[2][0], "NE=2,FR=0");
  EXPECT_EQ(labels[3][0], "NE=3");
}

TEST_F(Resources, EveryElementHasALabelAndARecord) {
  Rows labels = inventory("SELECT native_id, name FROM device");
  labels.push_back({"OS=1", "OS"});
  labels.insert(labels.begin(), {"fdn", "label"});
  EXPECT_EQ(sorted(query({"res", "ne-labels"})), sorted(labels));

  Rows elements = {{"resIDs", "iid", "name", "resMainTypeID", "resSubTypeID"},
                   {"1", "2", "OSS", "1", "0"}};
  for (const auto& row : inventory("SELECT dev_id, name, main_type * 65536 + sub_type FROM device "
                                   "ORDER BY dev_id")) {
    elements.push_back({row[0], iidText(std::stoll(row[0])), row[1], "1", row[2]});
  }
  EXPECT_EQ(query({"res", "elements"}), elements);
}

TEST_F(Resources, ContentsAreSelectedByTypeAndPath) {
  const Rows frames = inventory(
      "SELECT native_id, name, sub_type, res_id FROM resource WHERE "
      "dev_id = 2 AND main_type = 3 ORDER BY seq");
  const Rows found = query({"res", "contained", "2", "--main-type", "3"});
  ASSERT_EQ(found.size(), frames.size() + 1);
  for (std::size_t i = 0; i < frames.size(); ++i) {
    EXPECT_EQ(found[i + 1],
              (std::vector<std::string>{pathOf(frames[i][0]), iidText(std::stoll(frames[i][3])),
                                        frames[i][1], "3", frames[i][2]}));
  }
  EXPECT_THAT(query({"res", "contained", "2", "--main-type", "3", "--sub-type", frames[0][2]}),
              SizeIs(testing::Ge(2U)));
  EXPECT_THAT(query({"res", "contained", "2", "--main-type", "3", "--sub-type", "1"}), SizeIs(1));
  const Rows slots =
      inventory("SELECT res_id FROM resource WHERE main_type = 4 AND parent_id = " + frames[0][3]);
  EXPECT_THAT(query({"res", "contained", "2", frames[0][3], "--main-type", "4"}),
              SizeIs(slots.size() + 1));
}

TEST_F(Resources, AccessLabelsComeFromTheServiceAndFromTheName) {
  const Rows frame =
      inventory("SELECT native_id, name FROM resource WHERE main_type = 3 ORDER BY res_id LIMIT 1");
  const Rows daughter = inventory(
      "SELECT native_id, name FROM resource WHERE main_type = 21 ORDER BY res_id LIMIT 1");
  ASSERT_THAT(daughter, SizeIs(1));
  EXPECT_EQ(query({"res", "access-labels", frame[0][0], daughter[0][0], "NE=2,FR=0,S=3,CP=1",
                   "NE=2,FR=0,S=3,PP=0-3-5", "NE=2"}),
            (Rows{{"fdn", "label"},
                  {frame[0][0], frame[0][1]},
                  {daughter[0][0], daughter[0][1]},
                  {"NE=2,FR=0,S=3,CP=1", "Frame:0/Slot:3"},
                  {"NE=2,FR=0,S=3,PP=0-3-5", "Frame:0/Slot:3/Port:5"},
                  {"NE=2", ""}}));
}

TEST_F(Resources, PlaceKeeperAndAttributesOfTenElements) {
  for (int element = kFirst; element <= kLast; ++element) {
    const std::string id = std::to_string(element);
    const std::string iid = iidText(element);
    Rows place = inventory(
        "SELECT country, province, city, address FROM device_place WHERE "
        "dev_id = " +
        id);
    ASSERT_THAT(place, SizeIs(1)) << element;
    place[0].insert(place[0].begin(), iid);
    place.insert(place.begin(), {"iid", "country", "province", "city", "address"});
    EXPECT_EQ(query({"res", "location", iid}), place);

    Rows keeper = inventory(
        "SELECT k.keeper_id, name, dept, phone_no, email, '' FROM keeper k "
        "JOIN device_keeper d ON d.keeper_id = k.keeper_id WHERE dev_id = " +
        id + " ORDER BY seq LIMIT 1");
    if (keeper.empty()) keeper = {{"0", "", "", "", "", ""}};  // the empty list's one record
    EXPECT_EQ(sorted(query({"res", "maintenance", iid})), keeper) << element;

    const Rows attributes =
        inventory("SELECT 0, number, value FROM resource_attribute WHERE res_id = " + id +
                  " AND number <> 30 AND number NOT BETWEEN 60 AND 63 ORDER BY number");
    ASSERT_THAT(attributes, testing::Not(IsEmpty())) << element;
    Rows found = query({"res", "attributes", iid});
    found.erase(found.begin());
    EXPECT_EQ(found, attributes) << element;
  }
}

TEST_F(Resources, MainTypesAreListed) {
  Rows types = inventory("SELECT type_id, name FROM main_type ORDER BY type_id");
  types.insert(types.begin(), {"id", "name"});
  EXPECT_EQ(query({"res", "main-types"}), types);
}

TEST_F(Resources, AccessTypesComeFromTheInstallation) {
  EXPECT_THAT(query({"res", "access-types"}), SizeIs(6));  // those that come with ormasim
  configure([this](Json::Value& document) {
    document["installation"]["root"] = directory_.path().string();
  });
  directory_.write("etc/oss_cfg/nbi/corba/conf/ii_orma_corbaagent_bundle/devicetype.cfg",
                   std::string(600, '#') + "\r\nACCESS=1, 86\r\n");
  EXPECT_EQ(query({"res", "access-types"}),
            (Rows{{"type", "text"}, {"86", "ACCESS"}, {"268389721", "ACCESS"}}));
}

struct SwitchCase {
  int value;
  const char* label;  // of "端口 é 😀"
};

TEST_F(Resources, LabelsComeInTheConfiguredCharacterSet) {
  inventory("UPDATE resource SET name = '端口 é 😀' WHERE native_id = 'NE=2,FR=0'");
  const SwitchCase kCases[] = {
      {0, "端口 é 😀"}, {1, "\xB6\xCB\xBF\xDA \xA8\xA6 ?"}, {2, "?? \xE9 ?"}};
  for (const auto& [value, label] : kCases) {
    configure([number = value](Json::Value& document) {
      document["text"]["characterSetSwitch"] = number;
    });
    const Outcome outcome = agent({"--format", "csv", "res", "labels", "NE=2,FR=0"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(outcome.out, HasSubstr(std::string(",") + label + ",")) << value;
  }
}

// What each command says and how it ends when the platform cannot be reached.
struct DeadCase {
  std::vector<std::string> words;
  int status;
  std::size_t records;
};

TEST_F(Resources, DeadPlatformEndsEachCommandAsItsOperationDoes) {
  killSimulator();
  const DeadCase kCases[] = {
      {{"res", "labels", "NE=2"}, 0, 0},
      {{"res", "ne-labels"}, 0, 0},
      {{"res", "elements"}, 1, 0},
      {{"res", "contained", "2", "--main-type", "3"}, 1, 0},
      {{"res", "tree", "2"}, 1, 0},
      {{"res", "access-labels", "NE=2,FR=0"}, 0, 1},
      {{"res", "location", iidText(2)}, 1, 0},
      {{"res", "maintenance", iidText(2)}, 1, 0},
      {{"res", "main-types"}, 1, 0},
  };
  for (const auto& [words, status, records] : kCases) {
    std::vector<std::string> all = {"--format", "csv"};
    all.insert(all.end(), words.begin(), words.end());
    const Outcome outcome = agent(all);
    EXPECT_EQ(outcome.status, status) << words[1] << outcome.err;
    EXPECT_THAT(rowsOf("csv", outcome.out), SizeIs(records + 1)) << words[1];
    EXPECT_THAT(outcome.err, HasSubstr("Couldn't connect to server")) << words[1];
  }
}

TEST_F(Resources, UnknownResourcesAreToldAsSuch) {
  EXPECT_THAT(query({"res", "labels", "NE=99999"}), SizeIs(1));
  EXPECT_THAT(query({"res", "tree", "99999"}), SizeIs(1));
  EXPECT_EQ(agent({"res", "attributes", iidText(99999)}).status, 1);
  const Outcome none = agent({"res", "labels"});
  EXPECT_EQ(none.status, 2);
  EXPECT_THAT(none.err, HasSubstr("there is no DN"));
  const Outcome missing = agent({"res", "labels", "--from", file("missing").string()});
  EXPECT_EQ(missing.status, 2);
  EXPECT_THAT(missing.err, HasSubstr("No such file"));
}

}  // namespace
}  // namespace systemtest
