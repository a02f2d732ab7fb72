#include "rest_fixture.h"

#include "deviceinfo.h"
#include "http_answers.h"
#include "orma/rest/rest_client.h"
#include "rest_faults.h"
#include "submapbufmgr.h"

namespace emf::faults {

RestMatrix::~RestMatrix() {
  DeviceInfo::Destroy();
  SubmapBufMgr::Destroy();
}

void RestMatrix::reach(int port, int connectMs, int totalMs) const {
  Json::Value root;
  Json::Value& rest = root["rest"];
  rest["baseUrl"] = "http://127.0.0.1:" + std::to_string(port);
  rest["connectTimeoutMs"] = connectMs;
  rest["totalTimeoutMs"] = totalMs;
  rest["maxAnswerBytes"] = kMaxAnswerBytes;
  rest["maxNesting"] = kMaxNesting;
  configure(root);
}

void RestMatrix::answer(std::vector<std::string> answers) {
  peer_.come([answers = std::move(answers)](const Wire& wire, std::size_t number) {
    if (readRequest(wire) && number < answers.size()) wire.send(httpAnswer(answers[number]));
  });
}

void RestMatrix::answerRightly(const RestOperation& operation) {
  std::vector<std::string> answers;
  for (const Exchange& exchange : operation.exchanges) answers.push_back(exchange.answer);
  answer(std::move(answers));
}

void RestMatrix::expectWhole(const RestOperation& operation) {
  answerRightly(operation);
  EXPECT_EQ(operation.call(), operation.expected());
}

// A client whose configuration is no longer current ends with the next request, which gets nowhere
// here.
Holdings RestMatrix::settled() {
  for (const RestOperation& operation : restOperations()) {
    SCOPED_TRACE(operation.name);
    expectWhole(operation);
  }
  peer_.go();
  configure(Json::objectValue);
  Json::Value answer;
  EXPECT_FALSE(Nimbola::SendRestReq(NS_UTIL::MakeRestReq(), answer));
  const Holdings holdings = {Holdings::now().descriptors, threadsAtStart_};
  expectHoldings(holdings);  // a thread that has ended may still be listed for a moment
  reach(peer_.port());
  return holdings;
}

std::string placeOf(const RestOperation& operation, std::size_t exchange) {
  return operation.name + ", exchange " + std::to_string(exchange);
}

}  // namespace emf::faults
