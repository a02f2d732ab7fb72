// Stands in for the C library's syslog, which the log calls, and keeps what it is given.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <syslog.h>

#include <cstdarg>
#include <cstdio>

#include "log_fixture.h"
#include "orma/log/trace.h"

namespace {

std::vector<std::string> written;

}  // namespace

extern "C" __attribute__((visibility("default"))) void syslog(int priority, const char* format,
                                                              ...) {
  char text[4096];
  std::va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(text, sizeof text, format, arguments);
  va_end(arguments);
  const std::string line = text;
  written.push_back(std::to_string(priority) + " " + line.substr(line.find("Z ") + 2));
}

namespace orma {
namespace {

class Syslog : public LogTest {
 protected:
  Syslog() {
    written.clear();
    configureLogWith(R"({"stderr": false, "syslog": true, "level": 3})");
  }

  static std::string line(int priority, const std::string& rest) {
    return std::to_string(priority) + " " + std::to_string(::gettid()) + " " + rest;
  }
};

TEST_F(Syslog, GetsEachMessageWithItsPriority) {
  writeLog(0, "", "f", "u", 1, "error %s%n");
  writeLog(1, "", "f", "u", 2, "information");
  writeLog(3, "", "f", "u", 3, "detail");
  NS_CORBA::TaTrace("%s", "trace");
  EXPECT_THAT(written, testing::ElementsAre(line(LOG_ERR, "error f:1 u - error %s%n"),
                                            line(LOG_INFO, "info f:2 u - information"),
                                            line(LOG_DEBUG, "detail f:3 u - detail"),
                                            line(LOG_DEBUG, "trace -:0 - - trace")));
}

TEST_F(Syslog, GetsNothingWhenItIsOff) {
  configureLogWith(R"({"stderr": false})");
  writeLog(0, "", "f", "u", 1, "error");
  EXPECT_THAT(written, testing::ElementsAre());
}

}  // namespace
}  // namespace orma
