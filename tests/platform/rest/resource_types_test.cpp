#include <gtest/gtest.h>

#include <limits>

#include "orma/rest/rest_client.h"

using namespace Nimbola;

TEST(OperatorWords, EachOperatorHasItsWord) {
  EXPECT_EQ(ToString(OPERATOR_EQUAL), "equal");
  EXPECT_EQ(ToString(OPERATOR_NOT_EQUAL), "notEqual");
  EXPECT_EQ(ToString(OPERATOR_GREATER), "greater");
  EXPECT_EQ(ToString(OPERATOR_LESS), "less");
  EXPECT_EQ(ToString(OPERATOR_IN), "in");
  EXPECT_EQ(ToString(OPERATOR_LIKE), "like");
}

TEST(OperatorWords, UnknownOperatorsHaveNone) {
  EXPECT_EQ(ToString(static_cast<OperatorType>(6)), "");
  EXPECT_EQ(ToString(static_cast<OperatorType>(-1)), "");
}

struct TypeRow {
  const char* key;
  MainType type;
  const char* field;
};

class MainTypes : public ::testing::TestWithParam<TypeRow> {};

TEST_P(MainTypes, LastKeyOfTheFdnGivesTheType) {
  const auto row = GetParam();
  EXPECT_EQ(GetMainTypeFromFDN(std::string(row.key) + "=7"), row.type);
  EXPECT_EQ(GetMainTypeFromFDN("NE=1,FR=2," + std::string(row.key) + "=0"), row.type);
}

TEST_P(MainTypes, SubTypeStandsInTheFieldOfTheType) {
  const auto row = GetParam();
  EXPECT_EQ(GetResSubTypeFieldName(row.type), row.field);
  Json::Value object;
  object[row.field] = 131;
  EXPECT_EQ(GetResSubTypeFromObj(object, row.type), 131);
}

INSTANTIATE_TEST_SUITE_P(
    Table, MainTypes,
    ::testing::Values(TypeRow{"NE", MAIN_TYPE_NETWORK_ELEMENT, "neType"},
                      TypeRow{"FR", MAIN_TYPE_FRAME, "frameType"},
                      TypeRow{"S", MAIN_TYPE_SLOT, "cardType"},
                      TypeRow{"SS", MAIN_TYPE_DAUGHTER_SLOT, "daughterCardType"},
                      TypeRow{"PP", MAIN_TYPE_PORT, "portType"},
                      TypeRow{"LP", MAIN_TYPE_PORT, "portType"},
                      TypeRow{"CP", MAIN_TYPE_CARD, "cardType"},
                      TypeRow{"SC", MAIN_TYPE_DAUGHTER_CARD, "daughterCardType"}),
    [](const auto& instance) { return std::string(instance.param.key); });

TEST(MainTypeFromFdn, UnknownAndMalformedFdnsHaveNone) {
  for (const char* fdn : {"", ",", "=", "NE", "OS=1", "ne=1", "NE =1", "NE=1,", "NE=1,XX=2"}) {
    EXPECT_EQ(GetMainTypeFromFDN(fdn), MAIN_TYPE_UNKNOWN) << fdn;
  }
}

TEST(SubType, UnknownMainTypeHasNoField) {
  EXPECT_EQ(GetResSubTypeFieldName(MAIN_TYPE_UNKNOWN), "");
  Json::Value object;
  object[""] = 5;
  EXPECT_EQ(GetResSubTypeFromObj(object, MAIN_TYPE_UNKNOWN), 0);
  EXPECT_EQ(GetResSubTypeFromObj(object, static_cast<MainType>(99)), 0);
}

class SubTypeOfElement : public ::testing::Test {
 protected:
  static std::int64_t subType(const Json::Value& value) {
    Json::Value object;
    object["neType"] = value;
    return GetResSubTypeFromObj(object, MAIN_TYPE_NETWORK_ELEMENT);
  }
};

TEST_F(SubTypeOfElement, NumbersAreTakenAsNumbersAndAsText) {
  EXPECT_EQ(subType(5), 5);
  EXPECT_EQ(subType(-5), -5);
  EXPECT_EQ(subType(5.0), 5);
  EXPECT_EQ(subType("5"), 5);
  EXPECT_EQ(subType("-9223372036854775808"), std::numeric_limits<std::int64_t>::min());
  EXPECT_EQ(subType(std::numeric_limits<Json::Int64>::max()),
            std::numeric_limits<std::int64_t>::max());
}

TEST_F(SubTypeOfElement, AnythingElseIsZero) {
  EXPECT_EQ(subType(Json::Value()), 0);
  EXPECT_EQ(subType(true), 0);
  EXPECT_EQ(subType(5.5), 0);
  EXPECT_EQ(subType(1e300), 0);
  EXPECT_EQ(subType(std::numeric_limits<Json::UInt64>::max()), 0);
  EXPECT_EQ(subType(""), 0);
  EXPECT_EQ(subType("5x"), 0);
  EXPECT_EQ(subType("9223372036854775808"), 0);
  EXPECT_EQ(subType(Json::Value(Json::arrayValue)), 0);
  EXPECT_EQ(subType(Json::Value(Json::objectValue)), 0);
}

TEST(SubType, ObjectsThatAreNoneOrLackTheFieldGiveZero) {
  EXPECT_EQ(GetResSubTypeFromObj(Json::Value(), MAIN_TYPE_NETWORK_ELEMENT), 0);
  EXPECT_EQ(GetResSubTypeFromObj(Json::Value(7), MAIN_TYPE_NETWORK_ELEMENT), 0);
  EXPECT_EQ(GetResSubTypeFromObj(Json::Value("neType"), MAIN_TYPE_NETWORK_ELEMENT), 0);
  EXPECT_EQ(GetResSubTypeFromObj(Json::Value(Json::objectValue), MAIN_TYPE_NETWORK_ELEMENT), 0);
}

TEST(PostData, IsTheDocumentItself) {
  Json::Value document;
  document["condition"]["filter"]["logOp"] = "or";
  EXPECT_EQ(Json2PostData(document), document);
  EXPECT_TRUE(Json2PostData(Json::Value()).isNull());
}
