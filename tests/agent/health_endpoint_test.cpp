// The endpoint against clients that behave and clients that do not.
#include "health_endpoint.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <chrono>
#include <string>
#include <vector>

#include "host_failure.h"

namespace ormaagent {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

int portOf(const std::string& address) { return std::stoi(address.substr(address.rfind(':') + 1)); }

// A client on the bare socket.
class Client {
 public:
  explicit Client(int port) : socket_(::socket(AF_INET, SOCK_STREAM, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    EXPECT_EQ(::connect(socket_, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
  }
  Client(const Client&) = delete;
  Client& operator=(const Client&) = delete;
  ~Client() { ::close(socket_); }

  void send(const std::string& bytes) {
    EXPECT_EQ(::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL),
              static_cast<ssize_t>(bytes.size()));
  }
  // Everything up to the end of the connection.
  std::string receive() {
    std::string all;
    char block[4096];
    for (;;) {
      const ssize_t count = ::recv(socket_, block, sizeof block, 0);
      if (count <= 0) return all;
      all.append(block, static_cast<std::size_t>(count));
    }
  }

 private:
  int socket_;
};

class Endpoint : public testing::Test {
 protected:
  std::string answerTo(const std::string& request) {
    Client client(port_);
    client.send(request);
    return client.receive();
  }

  HealthEndpoint endpoint_{{{"/good",
                             [] {
                               return Page{200, "text/plain", "good\n"};
                             }},
                            {"/bad", [] {
                               return Page{503, "text/plain", "bad\n"};
                             }}}};
  const std::string address_ = endpoint_.start("127.0.0.1", 0);
  const int port_ = portOf(address_);
};

TEST_F(Endpoint, TellsItsAddress) { EXPECT_THAT(address_, StartsWith("http://127.0.0.1:")); }

TEST_F(Endpoint, AnswersWithItsPages) {
  const std::string good = answerTo("GET /good HTTP/1.1\r\nHost: x\r\n\r\n");
  EXPECT_THAT(good, StartsWith("HTTP/1.1 200 OK\r\n"));
  EXPECT_THAT(good, HasSubstr("Content-Type: text/plain\r\n"));
  EXPECT_THAT(good, HasSubstr("\r\n\r\ngood\n"));
  EXPECT_THAT(answerTo("GET /bad?x=1 HTTP/1.1\r\nHost: x\r\n\r\n"),
              StartsWith("HTTP/1.1 503 Service Unavailable\r\n"));
}

TEST_F(Endpoint, AnswersHeadWithoutABody) {
  const std::string answer = answerTo("HEAD /good HTTP/1.1\r\nHost: x\r\n\r\n");
  EXPECT_THAT(answer, StartsWith("HTTP/1.1 200 OK\r\n"));
  EXPECT_THAT(answer, testing::EndsWith("\r\n\r\n"));
}

TEST_F(Endpoint, OtherPathsAreNotFound) {
  EXPECT_THAT(answerTo("GET / HTTP/1.1\r\nHost: x\r\n\r\n"), StartsWith("HTTP/1.1 404 "));
}

TEST_F(Endpoint, OtherMethodsAreNotAllowed) {
  const std::string answer = answerTo("DELETE /good HTTP/1.1\r\nHost: x\r\n\r\n");
  EXPECT_THAT(answer, StartsWith("HTTP/1.1 405 "));
  EXPECT_THAT(answer, HasSubstr("Allow: GET, HEAD\r\n"));
}

TEST_F(Endpoint, WhatIsNoRequestIsRefused) {
  EXPECT_THAT(answerTo("rubbish\r\n\r\n"), StartsWith("HTTP/1.1 400 "));
}

TEST_F(Endpoint, AStopDoesNotWaitForSlowClients) {
  std::vector<std::unique_ptr<Client>> clients;
  for (int i = 0; i < 12; ++i) {
    clients.push_back(std::make_unique<Client>(port_));
    clients.back()->send("GET /good HT");
  }
  const auto start = std::chrono::steady_clock::now();
  endpoint_.stop();
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
}

TEST(EndpointDeadline, ASlowClientIsCutOff) {
  HealthEndpoint endpoint({{"/good",
                            [] {
                              return Page{200, "text/plain", "good\n"};
                            }}},
                          std::chrono::milliseconds(50));
  Client client(portOf(endpoint.start("127.0.0.1", 0)));
  client.send("GET /good HT");
  EXPECT_THAT(client.receive(), testing::Not(HasSubstr("good\n")));
}

TEST(EndpointStart, APortInUseIsTold) {
  HealthEndpoint first({});
  const int port = portOf(first.start("127.0.0.1", 0));
  HealthEndpoint second({});
  try {
    second.start("127.0.0.1", port);
    FAIL() << "two listen at one port";
  } catch (const HostFailure& failure) {
    EXPECT_EQ(failure.what(), "cannot listen on 127.0.0.1 port " + std::to_string(port) +
                                  ": Address already in use; check serve.address and serve.port");
    EXPECT_EQ(failure.exitStatus(), 2);
  }
}

TEST(EndpointStart, TakesAddressesOfVersionSix) {
  HealthEndpoint endpoint({});
  try {
    EXPECT_THAT(endpoint.start("::1", 0), StartsWith("http://[::1]:"));
  } catch (const HostFailure& failure) {
    GTEST_SKIP() << "no loopback of version six here: " << failure.what();
  }
}

TEST(EndpointStart, AStopBeforeTheStartIsHarmless) {
  HealthEndpoint endpoint({});
  endpoint.stop();
  endpoint.stop();
}

}  // namespace
}  // namespace ormaagent
