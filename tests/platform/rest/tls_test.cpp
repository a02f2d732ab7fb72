// TLS: verified unless the configuration says otherwise.
#include <gmock/gmock.h>
#include <sys/stat.h>

#include "certificates.h"
#include "http_service.h"
#include "rest_fixture.h"
#include "scripted_peer.h"

using ::testing::AllOf;
using ::testing::HasSubstr;

class Tls : public RestTest {
 protected:
  ServiceTls serviceTls(const std::string& address = "127.0.0.1") {
    const auto pair = authority_.sign("service", address);
    return {pair.certificate, pair.key, ""};
  }
  bool send() {
    Json::Value answer;
    return Nimbola::SendRestReq(get("/p"), answer);
  }
  void configureTls(const HttpService& service, const Json::Value& tls) {
    Json::Value rest;
    rest["baseUrl"] = service.url();
    rest["tls"] = tls;
    configure(rest);
  }
  Json::Value trusting() const {
    Json::Value tls;
    tls["caFile"] = authority_.file();
    return tls;
  }

  Authority authority_{file("."), "authority"};
};

TEST_F(Tls, UnknownAuthorityIsRefused) {
  HttpService service(always("{}"), serviceTls());
  configureTls(service, Json::Value(Json::objectValue));
  EXPECT_FALSE(send());
  EXPECT_THAT(failureTrace(), AllOf(HasSubstr("certificate"), HasSubstr("check rest.tls.caFile")));
  EXPECT_TRUE(service.requests().empty());
}

TEST_F(Tls, ConfiguredAuthorityIsTrusted) {
  HttpService service(always("{}"), serviceTls(), HttpService::After::Keep);
  configureTls(service, trusting());
  EXPECT_TRUE(send());
  EXPECT_TRUE(send());
  EXPECT_EQ(service.connections(), 1u);
  EXPECT_TRUE(traces().empty());
}

TEST_F(Tls, CertificateOfAnotherHostIsRefused) {
  HttpService service(always("{}"), serviceTls("127.0.0.2"));
  configureTls(service, trusting());
  EXPECT_FALSE(send());
  EXPECT_THAT(failureTrace(), HasSubstr("that the service's certificate is for this host"));
}

TEST_F(Tls, VerificationCanBeSwitchedOffAndThatIsTold) {
  HttpService service(always("{}"), serviceTls("127.0.0.2"));
  Json::Value tls;
  tls["verify"] = false;
  configureTls(service, tls);
  EXPECT_TRUE(send());
  const auto told = traces();
  ASSERT_EQ(told.size(), 1u);
  EXPECT_EQ(told[0].level, "info");
  EXPECT_THAT(told[0].text, HasSubstr("rest.tls.verify is false"));
}

TEST_F(Tls, MissingAuthorityFileIsTold) {
  HttpService service(always("{}"), serviceTls());
  Json::Value tls;
  tls["caFile"] = "no-such-file.pem";
  configureTls(service, tls);
  EXPECT_FALSE(send());
  EXPECT_THAT(failureTrace(), HasSubstr("check that rest.tls.caFile names a readable PEM file"));
}

TEST_F(Tls, ClientCertificateIsShown) {
  ServiceTls strict = serviceTls();
  strict.clientAuthority = authority_.file();
  HttpService service(always("{}"), strict);
  const auto client = authority_.sign("client", "127.0.0.1");
  Json::Value tls = trusting();
  tls["certFile"] = client.certificate;
  tls["keyFile"] = client.key;
  configureTls(service, tls);
  EXPECT_TRUE(send());
}

TEST_F(Tls, KeyThatEveryUserCanReadIsRefused) {
  HttpService service(always("{}"), serviceTls());
  const auto client = authority_.sign("client", "127.0.0.1");
  ASSERT_EQ(::chmod(client.key.c_str(), 0644), 0);
  Json::Value tls = trusting();
  tls["certFile"] = client.certificate;
  tls["keyFile"] = client.key;
  configureTls(service, tls);
  EXPECT_FALSE(send());
  EXPECT_THAT(failureTrace(),
              HasSubstr("the key file " + client.key + " is open to every user (mode 0644)"));
  EXPECT_TRUE(service.requests().empty());
}

TEST_F(Tls, ServiceThatWantsAClientCertificateRefusesWithoutOne) {
  ServiceTls strict = serviceTls();
  strict.clientAuthority = authority_.file();
  HttpService service(always("{}"), strict);
  configureTls(service, trusting());
  EXPECT_FALSE(send());
  EXPECT_THAT(failureTrace(), HasSubstr("rest.tls.certFile"));
  EXPECT_TRUE(service.requests().empty());
}

TEST_F(Tls, UnusableClientCertificateIsTold) {
  HttpService service(always("{}"), serviceTls());
  Json::Value tls = trusting();
  tls["certFile"] = "no-such-file.pem";
  configureTls(service, tls);
  EXPECT_FALSE(send());
  EXPECT_THAT(failureTrace(), HasSubstr("check that rest.tls.certFile and rest.tls.keyFile"));
}

TEST_F(Tls, ServiceWithoutTlsIsTold) {
  HttpService plain(always("{}"));
  Json::Value rest;
  rest["baseUrl"] = "https" + plain.url().substr(4);
  configure(rest);
  EXPECT_FALSE(send());
  EXPECT_THAT(failureTrace(), HasSubstr("check that the service speaks TLS at this address"));
}
