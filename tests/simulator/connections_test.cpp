#include <gmock/gmock.h>

#include <atomic>
#include <chrono>
#include <thread>

#include "raw_client.h"
#include "request_framing.h"
#include "server_fixture.h"

namespace ormasim::testing {
namespace {

using std::chrono::steady_clock;
using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::StartsWith;

constexpr auto kPrompt = std::chrono::seconds(5);

class ConnectionsTest : public ServerTest {
 protected:
  // How long stop takes.
  steady_clock::duration stop() {
    const auto begin = steady_clock::now();
    server_->stop();
    return steady_clock::now() - begin;
  }
};

TEST_F(ConnectionsTest, OneConnectionServesManyRequests) {
  serveNetwork(10);
  RawClient client(port_);
  for (int i = 0; i < 50; ++i) {
    client.get(kDevices);
    EXPECT_THAT(client.readAnswer(), StartsWith("HTTP/1.1 200 OK\r\n"));
  }
}

TEST_F(ConnectionsTest, RequestsSentTogetherAreAnsweredInOrder) {
  serveNetwork(10);
  RawClient client(port_);
  const std::string request = "GET " + std::string(kDevices) + "?limit=";
  client.send(request + "1 HTTP/1.1\r\n\r\n" + request + "2 HTTP/1.1\r\n\r\n");
  EXPECT_EQ(json(bodyOf(client.readAnswer()))["objList"].size(), 1u);
  EXPECT_EQ(json(bodyOf(client.readAnswer()))["objList"].size(), 2u);
}

TEST_F(ConnectionsTest, RequestInPiecesIsOneRequest) {
  serveNetwork(10);
  RawClient client(port_);
  client.send("GET " + std::string(kDevices));
  client.send("?limit=1 HTTP/1.1\r");
  client.send("\n\r\n");
  EXPECT_THAT(client.readAnswer(), StartsWith("HTTP/1.1 200 OK\r\n"));
}

TEST_F(ConnectionsTest, ClientThatAsksForItGetsTheConnectionClosed) {
  serveNetwork(10);
  RawClient client(port_);
  client.send("GET " + std::string(kDevices) + " HTTP/1.1\r\nConnection: close\r\n\r\n");
  EXPECT_THAT(client.readToEnd(), StartsWith("HTTP/1.1 200 OK\r\n"));
  EXPECT_TRUE(client.ended());
}

TEST_F(ConnectionsTest, RequestThatIsNoHttpIsRefusedAndTheConnectionCloses) {
  serveNetwork(10);
  for (const char* bytes : {"hello\r\n\r\n", "FOO / HTTP/1.1\r\n\r\n"}) {
    RawClient client(port_);
    client.send(bytes);
    EXPECT_THAT(client.readToEnd(),
                AllOf(StartsWith("HTTP/1.1 400 Bad Request\r\n"), HasSubstr("{\"error\":")));
    EXPECT_TRUE(client.ended());
  }
}

TEST_F(ConnectionsTest, BodyOfAGetRequestIsNotTakenForARequest) {
  serveNetwork(10);
  RawClient client(port_);
  client.send("GET " + std::string(kDevices) +
              " HTTP/1.1\r\nContent-Length: 27\r\n\r\nGET /other HTTP/1.1\r\n\r\n....");
  const std::string answer = client.readToEnd();
  EXPECT_THAT(answer, AllOf(StartsWith("HTTP/1.1 400 Bad Request\r\n"),
                            HasSubstr("a GET request has no body here")));
  EXPECT_EQ(answer.find("HTTP/1.1 4", 1), std::string::npos);
}

TEST_F(ConnectionsTest, LongTargetIsRefusedAndNothingFalls) {
  serveNetwork(10);
  RawClient client(port_);
  client.send("POST /" + std::string(8000, 'x') + " HTTP/1.1\r\nContent-Length: 0\r\n\r\n");
  EXPECT_THAT(client.readAnswer(), StartsWith("HTTP/1.1 404"));
  RawClient longer(port_);
  longer.get("/" + std::string(9000, 'x'));
  EXPECT_THAT(longer.readToEnd(), StartsWith("HTTP/1.1 414"));
}

TEST_F(ConnectionsTest, BodyWithoutAProperLengthIsRefusedAtOnce) {
  struct Case {
    std::string head;
    std::string status;
    std::string reason;
  };
  const std::string number = "header Content-Length is not one decimal number";
  const std::string chunked = "header Transfer-Encoding must be chunked, without Content-Length";
  const std::string tooLong = "the body has more than 16777216 bytes";
  const Case cases[] = {
      {"POST", "411 ", "header Content-Length is missing"},
      {"POST|Content-Length: -1", "400 ", number},
      {"POST|Content-Length: 2x", "400 ", number},
      {"POST|Content-Length: 2|Content-Length: 3", "400 ", number},
      {"PUT|Content-Length: 16777217", "413 ", tooLong},
      {"PATCH|Content-Length: 99999999999999999999", "413 ", tooLong},
      {"POST|Transfer-Encoding: gzip", "400 ", chunked},
      {"POST|Transfer-Encoding: chunked|Content-Length: 2", "400 ", chunked},
      {"DELETE|Content-Length: 2", "400 ", "a DELETE request has no body here"},
      {"GET|Content-Length: 0|Content-Length: 2", "400 ", "a GET request has no body here"}};
  serveNetwork(10);
  for (const Case& one : cases) {
    std::string head = one.head + "|";
    head.insert(head.find('|'), " / HTTP/1.1");
    for (std::size_t bar; (bar = head.find('|')) != std::string::npos;) {
      head.replace(bar, 1, "\r\n");
    }
    RawClient client(port_);
    client.send(head + "\r\n{}");
    EXPECT_THAT(client.readToEnd(), AllOf(StartsWith("HTTP/1.1 " + one.status),
                                          HasSubstr("{\"error\":\"" + one.reason + "\"}")))
        << one.head;
  }
}

TEST_F(ConnectionsTest, HeadWithoutEndIsRefused) {
  serveNetwork(10);
  std::string headers = "GET / HTTP/1.1\r\n";
  while (headers.size() <= kHeadLimitBytes) headers += "A: b\r\n";
  for (const std::string& head : {headers, "GET /" + std::string(kHeadLimitBytes, 'x')}) {
    RawClient client(port_);
    client.send(head);
    EXPECT_THAT(client.readToEnd(),
                AllOf(StartsWith("HTTP/1.1 431 "),
                      HasSubstr("the request's head has more than 65536 bytes")));
  }
}

TEST_F(ConnectionsTest, BodyWithoutEndIsRefused) {
  serveNetwork(10);
  RawClient client(port_);
  client.send("POST / HTTP/1.1\r\nTransfer-Encoding: chunked\r\n\r\n");
  const std::string chunk = "100000\r\n" + std::string(1 << 20, ' ') + "\r\n";
  for (int i = 0; i < 17; ++i) client.send(chunk);
  EXPECT_THAT(client.readToEnd(), AllOf(StartsWith("HTTP/1.1 413 "),
                                        HasSubstr("the body has more than 16777216 bytes")));
}

TEST_F(ConnectionsTest, RequestThatTricklesInIsRefusedWhenItsTimeIsOver) {
  times_.request = std::chrono::seconds(2);
  serveNetwork(10, 2);
  RawClient slow(port_);
  RawClient other(port_);
  slow.send("GET " + std::string(kDevices) + " HTTP/1.1\r\nA: ");
  const auto end = steady_clock::now() + std::chrono::seconds(20);
  while (!slow.readable() && steady_clock::now() < end) {
    other.get(std::string(kDevices) + "?limit=1");
    ASSERT_THAT(other.readAnswer(), StartsWith("HTTP/1.1 200 OK\r\n"));
    slow.send("x");
  }
  ASSERT_TRUE(slow.readable());
  EXPECT_THAT(slow.readToEnd(),
              AllOf(StartsWith("HTTP/1.1 408 "), HasSubstr("the request was not whole in time")));
}

TEST_F(ConnectionsTest, ClientThatDoesNotReadIsLeftWhenItsTimeIsOver) {
  times_.answer = std::chrono::milliseconds(100);
  serveNetwork(100000, 1);
  RawClient client(port_);
  client.get(std::string(kDevices) + "?limit=100000");
  ASSERT_EQ(firstReadable({&client}), 0);  // the answer, far beyond what the sockets hold, began
  const auto begin = steady_clock::now();
  RawClient other(port_);
  other.send("FOO / HTTP/1.1\r\n\r\n");
  EXPECT_THAT(other.readToEnd(), StartsWith("HTTP/1.1 400 "));
  EXPECT_LT(steady_clock::now() - begin, kPrompt);
}

TEST_F(ConnectionsTest, PartOfAnAnswerCannotBeAskedFor) {
  serveNetwork(10);
  const std::string target = std::string(kDevices) + "?limit=1";
  const httplib::Result part = get(target, {{"Range", "bytes=0-1"}});
  EXPECT_EQ(part->status, 200);
  EXPECT_EQ(part->body, get(target)->body);
}

TEST_F(ConnectionsTest, IdleConnectionsDoNotKeepOthersWaiting) {
  serveNetwork(10, 2);
  RawClient idle1(port_);
  RawClient idle2(port_);
  for (RawClient* client : {&idle1, &idle2}) {
    client->get(kDevices);
    EXPECT_THAT(client->readAnswer(), StartsWith("HTTP/1.1 200 OK\r\n"));
  }
  RawClient third(port_);
  third.get(kDevices);
  EXPECT_THAT(third.readAnswer(), StartsWith("HTTP/1.1 200 OK\r\n"));
}

TEST_F(ConnectionsTest, EightThreadsGetWholeAnswers) {
  serveNetwork(300, 4);
  const std::string expected = get(kDevices)->body;
  std::atomic<int> right{0};
  std::vector<std::thread> threads;
  for (int i = 0; i < 8; ++i) {
    threads.emplace_back([&] {
      for (int round = 0; round < 20; ++round) {
        const httplib::Result result = get(kDevices);
        if (result && result->body == expected) ++right;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(right, 160);
}

TEST_F(ConnectionsTest, StopDoesNotWaitForAnIdleConnection) {
  serveNetwork(10);
  RawClient client(port_);
  client.get(kDevices);
  client.readAnswer();
  EXPECT_LT(stop(), kPrompt);
  EXPECT_TRUE(client.closedSilently());
}

TEST_F(ConnectionsTest, StopDoesNotWaitForHalfARequest) {
  serveNetwork(10);
  RawClient client(port_);
  client.get(kDevices);
  client.readAnswer();
  client.send("GET " + std::string(kDevices));
  EXPECT_LT(stop(), kPrompt);
}

TEST_F(ConnectionsTest, StopDoesNotWaitForAClientThatDoesNotRead) {
  serveNetwork(100000);
  RawClient client(port_);
  client.get(std::string(kDevices) + "?limit=100000");
  ASSERT_EQ(firstReadable({&client}), 0);  // the answer, far beyond what the sockets hold, began
  EXPECT_LT(stop(), kPrompt);
}

TEST_F(ConnectionsTest, StopDoesNotWaitForStalledRequests) {
  useFaults(
      R"([{"path": "/rest/resource/v2/dev-properties", "requests": [1], "action": "stall"}])");
  serveNetwork(10);
  RawClient first(port_);
  RawClient second(port_);
  first.get(kDevices);
  second.get(kDevices);
  // One of them is the first request; when the other has its answer, that one is held.
  const int answered = firstReadable({&first, &second});
  ASSERT_GE(answered, 0);
  EXPECT_LT(stop(), kPrompt);
  EXPECT_TRUE((answered == 0 ? second : first).closedSilently());
}

TEST_F(ConnectionsTest, StoppedServerTakesNoConnections) {
  serveNetwork(10);
  stop();
  EXPECT_THROW(RawClient{port_}, std::runtime_error);
}

TEST_F(ConnectionsTest, StopIsHarmlessWhenRepeatedOrEarly) {
  settings_.databaseFile = "";
  serveNetwork(10);
  stop();
  stop();
  HttpServer neverStarted(*handler_);
  neverStarted.stop();
}

TEST_F(ConnectionsTest, PortInUseIsAnError) {
  serveNetwork(10);
  HttpServer other(*handler_);
  EXPECT_EQ(errorOf([&] { other.start(port_); }),
            "cannot listen on 127.0.0.1:" + std::to_string(port_) +
                ": Address already in use; give another port, or 0 for a free one");
}

}  // namespace
}  // namespace ormasim::testing
