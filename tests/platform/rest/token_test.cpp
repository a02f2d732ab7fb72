// Where the token comes from, and that it stays out of every trace.
#include <gmock/gmock.h>
#include <stdlib.h>
#include <sys/stat.h>

#include "http_service.h"
#include "rest_fixture.h"

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

class Token : public RestTest {
 protected:
  void configureToken(const std::string& file, const std::string& environment = "") {
    Json::Value rest;
    rest["baseUrl"] = service_.url();
    rest["token"]["file"] = file;
    rest["token"]["environment"] = environment;
    configure(rest);
  }
  std::string sentToken() {
    Json::Value answer;
    EXPECT_TRUE(Nimbola::SendRestReq(get("/p"), answer));
    const auto requests = service_.requests();
    return requests.empty() ? "" : requests.back().get_header_value("X-Auth-Token");
  }
  std::string failure() {
    Json::Value answer;
    EXPECT_FALSE(Nimbola::SendRestReq(get("/p"), answer));
    EXPECT_TRUE(service_.requests().empty());
    return failureTrace();
  }

  HttpService service_{always("{}")};
};

TEST_F(Token, NoneConfiguredMeansNoHeader) {
  configureToken("");
  EXPECT_EQ(sentToken(), "");
  EXPECT_FALSE(service_.request().has_header("X-Auth-Token"));
}

TEST_F(Token, FileIsReadAndTrimmed) {
  writeSecret("token", " \r\nabc.DEF-123==\n\n");
  configureToken("token");
  EXPECT_EQ(sentToken(), "abc.DEF-123==");
}

TEST_F(Token, RenewedFileCountsFromTheNextRequest) {
  writeSecret("token", "first");
  configureToken("token");
  EXPECT_EQ(sentToken(), "first");
  writeSecret("token", "again");
  EXPECT_EQ(sentToken(), "again");
}

TEST_F(Token, EnvironmentVariableIsRead) {
  ::setenv("REST_TEST_TOKEN", "from-environment\n", 1);
  configureToken("", "REST_TEST_TOKEN");
  EXPECT_EQ(sentToken(), "from-environment");
  ::unsetenv("REST_TEST_TOKEN");
  configureToken("", "REST_TEST_TOKEN");
  Json::Value answer;
  EXPECT_FALSE(Nimbola::SendRestReq(get("/p"), answer));
  EXPECT_THAT(failureTrace(), AllOf(HasSubstr("the configured token is empty or missing"),
                                    HasSubstr("check rest.token.environment")));
}

TEST_F(Token, FileWinsOverEnvironment) {
  ::setenv("REST_TEST_TOKEN", "from-environment", 1);
  writeSecret("token", "from-file");
  configureToken("token", "REST_TEST_TOKEN");
  EXPECT_EQ(sentToken(), "from-file");
  ::unsetenv("REST_TEST_TOKEN");
}

TEST_F(Token, MissingFileIsToldByName) {
  configureToken("no-such-file");
  EXPECT_THAT(failure(), AllOf(HasSubstr("the token file " + file("no-such-file") +
                                         " cannot be read: No such file or directory"),
                               HasSubstr("check rest.token.file")));
}

TEST_F(Token, FileThatEveryUserCanReadIsRefused) {
  for (const unsigned mode : {0604u, 0644u, 0602u, 0601u}) {
    writeSecret("token", "se-cret", mode);
    configureToken("token");
    EXPECT_THAT(failure(), AllOf(HasSubstr("the token file " + file("token") +
                                           " is open to every user (mode 0"),
                                 HasSubstr("take the access away: chmod o-rwx; check "
                                           "rest.token.file"),
                                 Not(HasSubstr("se-cret"))))
        << mode;
  }
}

TEST_F(Token, FileThatTheGroupCanReadIsTaken) {
  writeSecret("token", "abc", 0640);
  configureToken("token");
  EXPECT_EQ(sentToken(), "abc");
}

TEST_F(Token, EmptyFileIsAFailure) {
  writeSecret("token", " \n");
  configureToken("token");
  EXPECT_THAT(failure(), HasSubstr("the configured token is empty or missing"));
}

TEST_F(Token, PipesAndDirectoriesAreRefusedAndDoNotBlock) {
  ASSERT_EQ(::mkfifo(file("pipe").c_str(), 0600), 0);
  configureToken("pipe");
  EXPECT_THAT(failure(), HasSubstr("cannot be read"));
  configureToken(".");
  EXPECT_THAT(failure(), HasSubstr("cannot be read"));
}

TEST_F(Token, CannotSplitHeaders) {
  for (const char* token : {"se-cret\r\nX-Evil: 1", "se-cret\nb", "se-cret\x01", "se-cret\x7f"}) {
    writeSecret("token", token);
    configureToken("token");
    EXPECT_THAT(failure(), AllOf(HasSubstr("the configured token holds control characters"),
                                 Not(HasSubstr("se-cret"))));
  }
}

TEST_F(Token, OverlongTokenIsRefused) {
  writeSecret("token", std::string(16385, 'x'));
  configureToken("token");
  EXPECT_THAT(failure(), HasSubstr("too long"));
  writeSecret("token", std::string(1000, 'x'));
  EXPECT_EQ(sentToken(), std::string(1000, 'x'));
}

TEST_F(Token, NeverStandsInATrace) {
  HttpService refusing(always("{}", 401));
  writeSecret("token", "se-cret");
  Json::Value rest;
  rest["baseUrl"] = refusing.url();
  rest["token"]["file"] = "token";
  configure(rest);
  Json::Value answer;
  EXPECT_FALSE(Nimbola::SendRestReq(get("/p"), answer));
  EXPECT_THAT(failureTrace(), AllOf(HasSubstr("401"), Not(HasSubstr("se-cret"))));
}
