// What every test of the REST client shares: a configuration of its own, the traces it leaves, and
// a scratch directory.
#pragma once

#include <gtest/gtest.h>
#include <json/value.h>

#include <string>
#include <vector>

#include "orma/rest/rest_client.h"

struct Trace {
  std::string level;
  std::string file;
  std::string function;
  std::string text;
};

class RestTest : public ::testing::Test {
 protected:
  RestTest();
  ~RestTest() override;

  // Installs a configuration with this "rest" section; traces begin anew.
  void configure(const Json::Value& rest);
  void configureBaseUrl(const std::string& baseUrl);
  // What was traced since the last configure.
  std::vector<Trace> traces() const;
  // The text of the one trace that a failed exchange leaves; checks its level and source.
  std::string failureTrace() const;
  std::string write(const std::string& name, const std::string& content) const;
  // The same with that mode, whatever the umask is.
  std::string writeSecret(const std::string& name, const std::string& content,
                          unsigned mode = 0600) const;
  std::string file(const std::string& name) const { return directory_ + "/" + name; }

 private:
  std::string directory_;
  int configured_ = 0;
};

// A GET of `path`.
Nimbola::RestReq get(const std::string& path);
// A POST of `body` to `path`.
Nimbola::RestReq post(const std::string& path, const Json::Value& body);
// The value of a JSON text; the test fails when it is none.
Json::Value json(const std::string& text);
