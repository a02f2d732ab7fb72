// Connections are kept and shared; a new configuration begins anew.
#include <gmock/gmock.h>
#include <malloc.h>

#include <atomic>
#include <cstdlib>
#include <thread>
#include <vector>

#include "http_service.h"
#include "orma/rest/nbi_http_proxy.h"
#include "rest_fixture.h"
#include "scripted_peer.h"

class Connections : public RestTest {
 protected:
  static bool send() {
    Json::Value answer;
    return Nimbola::SendRestReq(get("/p"), answer);
  }
};

TEST_F(Connections, OneConnectionCarriesManyRequests) {
  HttpService service(always("[1]"), HttpService::After::Keep);
  configureBaseUrl(service.url());
  for (int i = 0; i < 50; ++i) ASSERT_TRUE(send());
  EXPECT_EQ(service.connections(), 1u);
}

// A sanitizer's allocator tells nothing of what is allocated.
TEST_F(Connections, IdleConnectionKeepsLittleOfALargeAnswer) {
  HttpService service(always("[\"" + std::string(3'000'000, 'x') + "\"]"),
                      HttpService::After::Keep);
  configureBaseUrl(service.url());
  const auto allocated = [] {
    const auto heap = ::mallinfo2();
    return heap.uordblks + heap.hblkhd;
  };
  const auto before = allocated();
  ASSERT_TRUE(send());
  EXPECT_LT(allocated(), before + 8'000'000);
  ASSERT_TRUE(send());
  EXPECT_EQ(service.connections(), 1u);
}

TEST_F(Connections, FailingStatusKeepsTheConnection) {
  HttpService service(always("{}", 503), HttpService::After::Keep);
  configureBaseUrl(service.url());
  for (int i = 0; i < 5; ++i) EXPECT_FALSE(send());
  EXPECT_EQ(service.connections(), 1u);
}

TEST_F(Connections, ThreadsHandConnectionsOn) {
  HttpService service(always("[1]"), HttpService::After::Keep);
  configureBaseUrl(service.url());
  for (int i = 0; i < 10; ++i) std::thread([] { EXPECT_TRUE(send()); }).join();
  EXPECT_EQ(service.connections(), 1u);
}

TEST_F(Connections, EightThreadsShareAtMostEight) {
  HttpService service(
      [](const httplib::Request& request, httplib::Response& response) {
        response.set_content("{\"asked\":\"" + request.get_param_value("n") + "\"}",
                             "application/json");
      },
      HttpService::After::Keep);
  configureBaseUrl(service.url());
  std::vector<std::thread> threads;
  for (int t = 0; t < 8; ++t) {
    threads.emplace_back([t] {
      for (int i = 0; i < 50; ++i) {
        Nimbola::RestReq request = get("/p");
        request.params["n"] = t * 1000 + i;
        Json::Value answer;
        ASSERT_TRUE(Nimbola::SendRestReq(request, answer));
        ASSERT_EQ(answer["asked"].asString(), std::to_string(t * 1000 + i));
      }
    });
  }
  for (auto& thread : threads) thread.join();
  EXPECT_EQ(service.requests().size(), 400u);
  EXPECT_LE(service.connections(), 8u);
}

TEST_F(Connections, EightThreadsListTheDevices) {
  HttpService service(
      [](const httplib::Request& request, httplib::Response& response) {
        const int page = std::atoi(request.get_param_value("marker").c_str());
        response.set_content(
            "{\"objList\":[{\"nativeId\":\"NE=" + std::to_string(page) +
                "\"},{\"nativeId\":\"x\"}],\"isTruncated\":" + (page < 9 ? "true" : "false") +
                ",\"marker\":\"" + std::to_string(page + 1) + "\"}",
            "application/json");
      },
      HttpService::After::Keep);
  configureBaseUrl(service.url());
  std::vector<std::thread> threads;
  for (int t = 0; t < 8; ++t) {
    threads.emplace_back([] {
      std::vector<Json::Value> devices;
      ASSERT_TRUE(NS_UTIL::NBIHTTPProxy::GetAllDevProperty(devices));
      ASSERT_EQ(devices.size(), 20u);
      EXPECT_EQ(devices[18]["nativeId"].asString(), "NE=9");
    });
  }
  for (auto& thread : threads) thread.join();
  EXPECT_EQ(service.requests().size(), 80u);
}

TEST_F(Connections, NoMoreIdleOnesAreKeptThanConfigured) {
  // Both exchanges are under way at once, so there are two connections; one is kept.
  std::atomic<int> inside{0};
  std::atomic<bool> together{true};
  HttpService service(
      [&](const httplib::Request&, httplib::Response& response) {
        ++inside;
        while (together && inside < 2) std::this_thread::yield();
        response.set_content("[]", "application/json");
      },
      HttpService::After::Keep);
  Json::Value rest;
  rest["baseUrl"] = service.url();
  rest["maxConnections"] = 1;
  configure(rest);
  const auto two = [] {
    std::thread other([] { EXPECT_TRUE(send()); });
    EXPECT_TRUE(send());
    other.join();
  };
  two();
  EXPECT_EQ(service.connections(), 2u);
  inside = 0;
  two();
  EXPECT_EQ(service.connections(), 3u);
  together = false;
}

TEST_F(Connections, ConnectionThatTheServiceClosedIsReplaced) {
  std::atomic<int> served{0};
  ScriptedPeer peer([&](PeerConnection& connection) {
    connection.readHeaders();
    ++served;  // before the answer, behind which the client looks at it
    connection.send("HTTP/1.1 200 OK\r\nContent-Length: 2\r\n\r\n[]");
  });
  configureBaseUrl(peer.url());
  for (int i = 1; i <= 5; ++i) {
    EXPECT_TRUE(send());
    EXPECT_EQ(served, i);
  }
}

TEST_F(Connections, NewConfigurationCountsFromTheNextRequest) {
  HttpService first(always("1"), HttpService::After::Keep);
  HttpService second(always("2"), HttpService::After::Keep);
  Json::Value answer;
  configureBaseUrl(first.url());
  EXPECT_TRUE(Nimbola::SendRestReq(get("/p"), answer));
  EXPECT_EQ(answer, 1);
  configureBaseUrl(second.url());
  EXPECT_TRUE(Nimbola::SendRestReq(get("/p"), answer));
  EXPECT_EQ(answer, 2);
}

TEST_F(Connections, ConfigurationsMayChangeUnderRunningRequests) {
  HttpService first(always("1"), HttpService::After::Keep);
  HttpService second(always("2"), HttpService::After::Keep);
  configureBaseUrl(first.url());
  std::atomic<bool> stop{false};
  std::vector<std::thread> threads;
  for (int t = 0; t < 8; ++t) {
    threads.emplace_back([&] {
      while (!stop) EXPECT_TRUE(send());
    });
  }
  for (int i = 0; i < 20; ++i) {
    configureBaseUrl(i % 2 == 0 ? second.url() : first.url());
    EXPECT_TRUE(send());
  }
  stop = true;
  for (auto& thread : threads) thread.join();
}

TEST_F(Connections, EightThreadsMeetAnOutage) {
  const ClosedPort port;
  configureBaseUrl(port.url());
  std::vector<std::thread> threads;
  for (int t = 0; t < 8; ++t) {
    threads.emplace_back([] {
      for (int i = 0; i < 10; ++i) EXPECT_FALSE(send());
    });
  }
  for (auto& thread : threads) thread.join();
  EXPECT_EQ(traces().size(), 80u);
}
