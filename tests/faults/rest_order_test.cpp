// Pages that come in the wrong order, members of the wrong type, and a service that goes and comes
// back while the client keeps its connections.
#include <gmock/gmock.h>
#include <json/reader.h>
#include <json/writer.h>

#include <atomic>

#include "http_answers.h"
#include "rest_fixture.h"

namespace emf::faults {
namespace {

using testing::AnyOfArray;

std::string recordsOf(const std::vector<std::string>& records) {
  std::string all;
  for (const std::string& record : records) all += record + '\n';
  return all;
}

class FaultMatrixRestPages : public RestMatrix {
 protected:
  // The operations that ask for one page after the other.
  static std::vector<RestOperation> paged() {
    std::vector<RestOperation> operations;
    for (const RestOperation& operation : restOperations()) {
      if (operation.exchanges.size() == 2 && operation.keepsOrder) operations.push_back(operation);
    }
    return operations;
  }
  // Asks for the pages by number, so that it asks for as many whatever comes.
  static bool asksByNumber(const RestOperation& operation) {
    return operation.counted || operation.exchanges[0].alone;
  }

  void expectOutcome(const RestOperation& operation, std::vector<std::string> answers,
                     const Outcome& outcome) {
    SCOPED_TRACE(operation.name);
    answer(std::move(answers));
    EXPECT_EQ(operation.call(), outcome);
    expectWhole(operation);
  }
  static std::vector<std::string> both(std::vector<std::string> first,
                                       const std::vector<std::string>& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
  }
};

// The last page says that it is the last: nothing else is asked for, and that is a whole answer.
TEST_F(FaultMatrixRestPages, WrongOrderLastPageFirst) {
  for (const RestOperation& operation : paged()) {
    const Exchange& first = operation.exchanges[0];
    const Exchange& last = operation.exchanges[1];
    const bool isFound = operation.replaces && last.records.empty();
    const std::vector<std::string> read =
        asksByNumber(operation) ? both(last.records, first.records) : last.records;
    Outcome expected = operation.ended(operation.results.success, read, true);
    if (isFound) expected = operation.expected(Loss::Failed);
    if (operation.name == "EMFTopoI::getAllRootSubMaps") {
      expected = operation.expected();
    } else if (operation.name == "EMFResMgrI::getAllNeResLabel") {
      expected.records = {"A|earlier", "NE=13|core-13"};
    }
    expectOutcome(operation, {last.answer, first.answer}, expected);
  }
}

// A page that comes again is taken again, but by the device listing, which then has no end in
// sight.
TEST_F(FaultMatrixRestPages, WrongOrderAPageAgain) {
  for (const RestOperation& operation : paged()) {
    const Exchange& first = operation.exchanges[0];
    const Exchange& last = operation.exchanges[1];
    std::vector<std::string> read = both(first.records, first.records);
    if (!asksByNumber(operation)) read = both(read, last.records);
    const Outcome expected = operation.isListing
                                 ? operation.expected(Loss::Failed)
                                 : operation.ended(operation.results.success, read, true);
    expectOutcome(operation, {first.answer, first.answer, last.answer}, expected);
  }
}

// --- Members

Json::Value parsed(const std::string& text) {
  Json::Value value;
  const std::unique_ptr<Json::CharReader> reader(Json::CharReaderBuilder().newCharReader());
  EXPECT_TRUE(reader->parse(text.data(), text.data() + text.size(), &value, nullptr)) << text;
  return value;
}

std::string compact(const Json::Value& value) {
  Json::StreamWriterBuilder builder;
  builder["indentation"] = "";
  return Json::writeString(builder, value);
}

// The texts of `root` with each of its values below `place`, one at a time, replaced.
void replaceEach(Json::Value& root, Json::Value& place, const Json::Value& replacement,
                 std::vector<std::string>& texts) {
  for (Json::Value& member : place) {
    Json::Value right = replacement;
    member.swap(right);
    texts.push_back(compact(root));
    member.swap(right);
    replaceEach(root, member, replacement, texts);
  }
}

struct WrongValue {
  const char* name;
  const char* json;
};
void PrintTo(const WrongValue& value, std::ostream* out) { *out << value.name; }

constexpr WrongValue kWrongValues[] = {
    {"null", "null"},        {"truth", "true"},
    {"number", "7"},         {"wideNumber", "9223372036854775807"},
    {"hugeNumber", "1e300"}, {"text", "\"text\""},
    {"array", "[]"},         {"object", "{}"},
    {"longText", nullptr},
};

Json::Value valueOf(const WrongValue& wrong) {
  return wrong.json == nullptr ? Json::Value(std::string(2000, 'x')) : parsed(wrong.json);
}

class RestMembers : public RestMatrix, public testing::WithParamInterface<WrongValue> {
 protected:
  // What the operation's header allows: a stated result with what was there before, or a stated
  // exception, with what was read before the bad page.
  static void expectStated(const RestOperation& operation, std::size_t at, const Outcome& outcome) {
    const RestResults& results = operation.results;
    std::vector<std::string> stated = {results.success, results.failed, results.noObject,
                                       results.noList};
    stated.insert(stated.end(), operation.throws.begin(), operation.throws.end());
    EXPECT_THAT(outcome.result, AnyOfArray(stated));
    if (operation.replaces || operation.allOrNone) return;
    std::vector<std::string> kept = operation.before;
    for (std::size_t i = 0; i < at; ++i) {
      const std::vector<std::string>& read = operation.exchanges[i].records;
      kept.insert(kept.end(), read.begin(), read.end());
    }
    EXPECT_THAT(recordsOf(outcome.records), testing::HasSubstr(recordsOf(kept)));
  }
};

TEST_P(RestMembers, Cell) {
  const Holdings before = settled();
  const Json::Value replacement = valueOf(GetParam());
  for (const RestOperation& operation : restOperations()) {
    for (std::size_t at = 0; at < operation.exchanges.size(); ++at) {
      SCOPED_TRACE(placeOf(operation, at));
      Json::Value root = parsed(operation.exchanges[at].answer);
      std::vector<std::string> bodies;
      replaceEach(root, root, replacement, bodies);
      for (const std::string& body : bodies) {
        SCOPED_TRACE(body);
        std::vector<std::string> answers;
        for (const Exchange& exchange : operation.exchanges) answers.push_back(exchange.answer);
        answers[at] = body;
        answer(std::move(answers));
        Outcome outcome;
        timeOf([&] { outcome = operation.call(); });
        expectStated(operation, at, outcome);
      }
    }
    expectWhole(operation);
  }
  EXPECT_EQ(settled(), before);
}

INSTANTIATE_TEST_SUITE_P(FaultMatrix, RestMembers, testing::ValuesIn(kWrongValues),
                         [](const auto& row) { return row.param.name; });

// --- Gone and back

class FaultMatrixRestReturns : public RestMatrix {
 protected:
  // Keeps every connection open, and answers the requests in their order, on whichever they come.
  void answerAndKeep(const RestOperation& operation) {
    peer_.come([this, &operation](const Wire& wire, std::size_t number) {
      if (number == 0) requests_ = 0;
      while (readRequest(wire)) {
        const std::size_t request = requests_++;
        if (request < operation.exchanges.size()) {
          wire.send(keptAnswer(operation.exchanges[request].answer));
        }
      }
    });
  }

  std::atomic<std::size_t> requests_{0};
};

TEST_F(FaultMatrixRestReturns, GoneAndBack) {
  const Holdings before = settled();
  for (const RestOperation& operation : restOperations()) {
    SCOPED_TRACE(operation.name);
    for (int round = 0; round < 3; ++round) {
      answerAndKeep(operation);
      EXPECT_EQ(operation.call(), operation.expected());
      peer_.go();
      EXPECT_EQ(operation.call(), operation.expected(Loss::Failed, 0, true));
    }
    answerAndKeep(operation);
    EXPECT_EQ(operation.call(), operation.expected());
  }
  EXPECT_EQ(settled(), before);
}

}  // namespace
}  // namespace emf::faults
