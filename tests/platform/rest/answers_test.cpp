// What counts as an answer, and what is told about everything else.
#include <gmock/gmock.h>
#include <sys/resource.h>

#include "http_service.h"
#include "rest_fixture.h"
#include "scripted_peer.h"

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

class Answers : public RestTest {
 protected:
  Json::Value answerOf(const std::string& body, int status = 200) {
    HttpService service(always(body, status));
    configureBaseUrl(service.url());
    Json::Value answer = "old";
    EXPECT_TRUE(Nimbola::SendRestReq(get("/p"), answer));
    return answer;
  }
  // The trace of an exchange that must fail.
  std::string failureAt(const std::string& baseUrl, const Nimbola::RestReq& request = get("/p")) {
    configureBaseUrl(baseUrl);
    return failure(request);
  }
  std::string failure(const Nimbola::RestReq& request = get("/p")) {
    Json::Value answer = "old";
    EXPECT_FALSE(Nimbola::SendRestReq(request, answer));
    EXPECT_TRUE(answer.isNull());
    return failureTrace();
  }
  std::string failureWith(const std::string& body, int status = 200,
                          const std::string& type = "application/json") {
    HttpService service(always(body, status, type));
    return failureAt(service.url());
  }
  std::string failureOfBytes(const std::string& bytes) {
    ScriptedPeer peer(answers(bytes));
    return failureAt(peer.url());
  }
};

TEST_F(Answers, JsonOfA2xxAnswerIsTheResponse) {
  EXPECT_EQ(answerOf(R"({"objList":[],"isTruncated":false})"),
            json(R"({"objList":[],"isTruncated":false})"));
  EXPECT_EQ(answerOf("[1,2]", 201), json("[1,2]"));
  EXPECT_EQ(answerOf("\"text\"", 299), Json::Value("text"));
  EXPECT_TRUE(traces().empty());
}

TEST_F(Answers, NullIsAnAnswerToo) { EXPECT_TRUE(answerOf("null").isNull()); }

TEST_F(Answers, ContentTypeDoesNotMatter) {
  HttpService service(always("[1]", 200, "text/plain"));
  configureBaseUrl(service.url());
  Json::Value answer;
  EXPECT_TRUE(Nimbola::SendRestReq(get("/p"), answer));
}

TEST_F(Answers, ChunkedAnswersAreJoined) {
  ScriptedPeer peer(
      answers("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n"
              "3\r\n{\"a\r\n4\r\n\":1}\r\n0\r\n\r\n"));
  configureBaseUrl(peer.url());
  Json::Value answer;
  EXPECT_TRUE(Nimbola::SendRestReq(get("/p"), answer));
  EXPECT_EQ(answer, json(R"({"a":1})"));
}

TEST_F(Answers, InvalidUtf8IsKeptAndTold) {
  EXPECT_EQ(answerOf("{\"name\":\"a\xff\"}")["name"].asString(), "a\xff");
  const auto told = traces();
  ASSERT_EQ(told.size(), 1u);
  EXPECT_EQ(told[0].level, "info");
  EXPECT_THAT(told[0].text, HasSubstr("/p is not valid UTF-8"));
}

struct StatusRow {
  int status;
  const char* check;
};

class FailingStatus : public Answers, public ::testing::WithParamInterface<StatusRow> {};

TEST_P(FailingStatus, IsToldWithWhatToCheck) {
  const auto row = GetParam();
  HttpService service(always(R"({"a":1})", row.status));
  EXPECT_EQ(failureAt(service.url()), "REST request GET " + service.url() +
                                          "/p failed: HTTP status " + std::to_string(row.status) +
                                          "; check " + row.check);
}

INSTANTIATE_TEST_SUITE_P(
    Table, FailingStatus,
    ::testing::Values(
        StatusRow{302,
                  "rest.baseUrl: it should name the final address, redirects are not followed"},
        StatusRow{400, "that rest.baseUrl names the right service in a matching release"},
        StatusRow{401, "the token: rest.token.file or rest.token.environment"},
        StatusRow{403, "the rights of the token's user"},
        StatusRow{404, "rest.baseUrl, and that this release of the service offers the path"},
        StatusRow{429, "the load of the service"}, StatusRow{500, "the service's own log"},
        StatusRow{503, "that the service is up and not overloaded"}),
    [](const auto& instance) { return std::to_string(instance.param.status); });

TEST_F(Answers, RedirectsAreNotFollowed) {
  HttpService other(always("[]"));
  HttpService service([&](const httplib::Request&, httplib::Response& response) {
    response.set_redirect(other.url() + "/q", 307);
  });
  EXPECT_THAT(failureAt(service.url()), HasSubstr("HTTP status 307"));
  EXPECT_TRUE(other.requests().empty());
}

TEST_F(Answers, NoContentIsNoAnswer) {
  EXPECT_THAT(failureOfBytes("HTTP/1.1 204 No Content\r\n\r\n"),
              HasSubstr("the answer (no content type, 0 bytes) is not usable JSON: it is empty"));
}

TEST_F(Answers, WhatIsNoJsonIsToldWithItsType) {
  EXPECT_THAT(failureWith("<html></html>", 200, "text/html"),
              AllOf(HasSubstr("the answer (text/html, 13 bytes) is not usable JSON: "),
                    HasSubstr("; check that rest.baseUrl names the service itself")));
}

TEST_F(Answers, NestingOf100000IsRefused) {
  EXPECT_THAT(failureWith(std::string(100000, '[') + std::string(100000, ']')),
              HasSubstr("nested deeper than 100 levels (rest.maxNesting)"));
}

TEST_F(Answers, BodyCutShortIsAFailure) {
  EXPECT_THAT(failureOfBytes("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n{\"a\":1}"),
              AllOf(HasSubstr("93 bytes remaining"),
                    HasSubstr("the service's own log: it broke the connection off")));
  failureOfBytes("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n7\r\n{\"a\":1}\r\n");
}

TEST_F(Answers, EveryPrefixOfAnAnswerIsAFailure) {
  const std::string whole = "HTTP/1.1 200 OK\r\nContent-Length: 7\r\n\r\n{\"a\":1}";
  for (std::size_t length = 0; length < whole.size(); ++length) {
    SCOPED_TRACE(length);
    failureOfBytes(whole.substr(0, length));
  }
}

TEST_F(Answers, GarbageIsAFailure) {
  EXPECT_THAT(failureOfBytes("\x16\x03\x01garbage\r\n\r\n"),
              HasSubstr("check that rest.baseUrl names an HTTP service"));
  failureOfBytes(std::string(100000, '\0'));
  failureOfBytes("HTTP/9.9 abc\r\n\r\n");
}

TEST_F(Answers, PortWhereNobodyListensIsToldWithItsAddress) {
  const ClosedPort port;
  EXPECT_THAT(failureAt(port.url()),
              AllOf(HasSubstr("GET " + port.url() + "/p failed: "), HasSubstr("Failed to connect"),
                    HasSubstr("that the service runs and rest.baseUrl names its host and port")));
}

TEST_F(Answers, HostThatIsNoneIsToldSo) {
  // A label beyond 63 characters fails before any name service is asked.
  const std::string host = std::string(64, 'x') + ".invalid";
  EXPECT_THAT(failureAt("http://" + host),
              AllOf(HasSubstr("Could not resolve host: " + host),
                    HasSubstr("the host name in rest.baseUrl and the name service")));
}

TEST_F(Answers, EmptyBaseUrlTellsWhichKeyToSet) {
  EXPECT_THAT(failureAt(""),
              HasSubstr("rest.baseUrl is not set: give the address of the "
                        "platform's REST service, for example http://127.0.0.1:8080"));
}

TEST_F(Answers, BaseUrlsThatAreNoneAreRefused) {
  for (const char* url : {"file:///etc/passwd", "ftp://127.0.0.1", "127.0.0.1:80", "http://",
                          "https://", "http:///x"}) {
    EXPECT_THAT(failureAt(url), HasSubstr("rest.baseUrl")) << url;
  }
  for (const char* url : {"http://h?x=1", "http://h/#a", "http://h /", "http://h\n/"}) {
    EXPECT_THAT(failureAt(url), HasSubstr("must not hold blanks")) << url;
  }
}

TEST_F(Answers, QueryAndBodyAreNotTraced) {
  const ClosedPort port;
  Nimbola::RestReq request = get("/p?own=se-cret");
  request.params["marker"] = "se-cret";
  EXPECT_THAT(failureAt(port.url(), request), Not(HasSubstr("se-cret")));
  EXPECT_THAT(failureAt(port.url(), post("/p", "se-cret")), Not(HasSubstr("se-cret")));
}

TEST_F(Answers, CredentialsOfAnUnusableBaseUrlAreNotTracedEither) {
  for (const char* url : {"agent:se-cret@host", "http://agent:se-cret/@host", "ftp://a:se-cret@h",
                          "http://agent:se-cret@@h", "http://a:se-cret@h#"}) {
    EXPECT_THAT(failureAt(url), Not(HasSubstr("se-cret"))) << url;
  }
}

TEST_F(Answers, ReasonsFromOutsideKeepToOneLine) {
  EXPECT_THAT(failureWith("x", 200, "text/a\x01"), HasSubstr("text/a\\x01"));
}

class AnswerSize : public Answers {
 protected:
  void limit(const std::string& baseUrl) {
    Json::Value rest;
    rest["baseUrl"] = baseUrl;
    rest["maxAnswerBytes"] = 1024;
    configure(rest);
  }
};

TEST_F(AnswerSize, UpToTheLimitIsTaken) {
  HttpService service(always('"' + std::string(1022, 'x') + '"'));
  limit(service.url());
  Json::Value answer;
  EXPECT_TRUE(Nimbola::SendRestReq(get("/p"), answer));
}

TEST_F(AnswerSize, OneByteMoreIsRefused) {
  HttpService service(always('"' + std::string(1023, 'x') + '"'));
  limit(service.url());
  EXPECT_THAT(failure(), AllOf(HasSubstr("the answer exceeds 1024 bytes"),
                               HasSubstr("check rest.maxAnswerBytes")));
}

TEST_F(AnswerSize, AnnouncedSizeIsRefusedBeforeTheBodyComes) {
  ScriptedPeer peer([](PeerConnection& connection) {
    connection.readHeaders();
    connection.send("HTTP/1.1 200 OK\r\nContent-Length: 1000000000000\r\n\r\n");
    connection.waitForClose();
  });
  limit(peer.url());
  EXPECT_THAT(failure(), HasSubstr("the answer exceeds 1024 bytes"));
}

TEST_F(AnswerSize, EndlessChunksAreCutOff) {
  ScriptedPeer peer([](PeerConnection& connection) {
    connection.readHeaders();
    connection.send("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n");
    while (connection.send("100\r\n" + std::string(256, ' ') + "\r\n")) {
    }
  });
  limit(peer.url());
  EXPECT_THAT(failure(), HasSubstr("the answer exceeds 1024 bytes"));
}

TEST_F(AnswerSize, EndlessHeadersAreCutOff) {
  ScriptedPeer peer([](PeerConnection& connection) {
    connection.readHeaders();
    connection.send("HTTP/1.1 200 OK\r\n");
    while (connection.send("X-Filler: " + std::string(1000, 'x') + "\r\n")) {
    }
  });
  limit(peer.url());
  EXPECT_THAT(failure(), HasSubstr("headers of the answer exceed 262144 bytes"));
}

TEST_F(AnswerSize, OneEndlessHeaderIsCutOff) {
  ScriptedPeer peer([](PeerConnection& connection) {
    connection.readHeaders();
    connection.send("HTTP/1.1 200 OK\r\nX-Filler: ");
    while (connection.send(std::string(1000, 'x'))) {
    }
  });
  limit(peer.url());
  failure();
}

TEST_F(AnswerSize, PackedAnswersAreRefused) {
  EXPECT_THAT(failureOfBytes("HTTP/1.1 200 OK\r\nContent-Encoding: gzip\r\nContent-Length: 2\r\n"
                             "\r\n{}"),
              HasSubstr("the answer is packed (gzip), which was not asked for"));
}

TEST_F(Answers, PeerThatClosesWhileALargeBodyIsSentEndsOnlyTheExchange) {
  ScriptedPeer peer([](PeerConnection& connection) { connection.readHeaders(); });
  failureAt(peer.url(), post("/p", std::string(20000000, 'x')));
}
