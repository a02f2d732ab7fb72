// Deadlines hold within 10 %, whatever the peer does. Time in which the machine lets nothing run is
// not the client's.
#include <gmock/gmock.h>

#include <chrono>

#include "lost_time.h"
#include "rest_fixture.h"
#include "scripted_peer.h"

using ::testing::HasSubstr;

class Deadlines : public RestTest {
 protected:
  static constexpr int kLimitMs = 2000;

  void expectFailureAt(const std::string& baseUrl, const char* limitKey) {
    Json::Value rest;
    rest["baseUrl"] = baseUrl;
    rest["connectTimeoutMs"] = 60000;
    rest["totalTimeoutMs"] = 60000;
    rest[limitKey] = kLimitMs;
    configure(rest);
    Json::Value answer;
    LostTime lost;
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(Nimbola::SendRestReq(get("/p"), answer));
    const LostTime::Milliseconds took = std::chrono::steady_clock::now() - start;
    EXPECT_GE(took.count(), kLimitMs * 0.9);
    EXPECT_LE((took - lost.stop()).count(), kLimitMs * 1.1);
    EXPECT_THAT(failureTrace(), HasSubstr("rest.connectTimeoutMs and rest.totalTimeoutMs"));
  }
};

TEST_F(Deadlines, PeerThatNeverAnswers) {
  ScriptedPeer peer([](PeerConnection& connection) { connection.waitForClose(); });
  expectFailureAt(peer.url(), "totalTimeoutMs");
}

TEST_F(Deadlines, PeerThatStallsInTheBody) {
  ScriptedPeer peer([](PeerConnection& connection) {
    connection.readHeaders();
    connection.send("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n{\"objList\":[");
    connection.waitForClose();
  });
  expectFailureAt(peer.url(), "totalTimeoutMs");
}

TEST_F(Deadlines, PeerThatDribbles) {
  ScriptedPeer peer([](PeerConnection& connection) {
    connection.readHeaders();
    connection.send("HTTP/1.1 200 OK\r\nContent-Length: 100000\r\n\r\n");
    while (!connection.closedWithin(20) && connection.send(" ")) {
    }
  });
  expectFailureAt(peer.url(), "totalTimeoutMs");
}

TEST_F(Deadlines, PeerThatKeepsPromisingAnAnswer) {
  ScriptedPeer peer([](PeerConnection& connection) {
    connection.readHeaders();
    while (!connection.closedWithin(20) && connection.send("HTTP/1.1 102 Processing\r\n\r\n")) {
    }
  });
  expectFailureAt(peer.url(), "totalTimeoutMs");
}

TEST_F(Deadlines, ConnectionThatIsNeverMade) {
  const DeafPort port;
  expectFailureAt(port.url(), "connectTimeoutMs");
}

TEST_F(Deadlines, TlsHandshakeThatNeverEnds) {
  ScriptedPeer peer([](PeerConnection& connection) { connection.waitForClose(); });
  expectFailureAt("https" + peer.url().substr(4), "connectTimeoutMs");
}
