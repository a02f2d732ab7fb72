#include "certificates.h"

#include <gtest/gtest.h>
#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/x509v3.h>
#include <sys/stat.h>

#include <cstdio>

namespace {

struct Free {
  void operator()(EVP_PKEY* key) const { EVP_PKEY_free(key); }
  void operator()(X509* certificate) const { X509_free(certificate); }
  void operator()(X509_EXTENSION* extension) const { X509_EXTENSION_free(extension); }
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using Key = std::unique_ptr<EVP_PKEY, Free>;
using Certificate = std::unique_ptr<X509, Free>;
using File = std::unique_ptr<std::FILE, Free>;

void addExtension(X509* certificate, X509* issuer, int kind, const std::string& value) {
  X509V3_CTX context;
  X509V3_set_ctx(&context, issuer, certificate, nullptr, nullptr, 0);
  const std::unique_ptr<X509_EXTENSION, Free> extension(
      X509V3_EXT_conf_nid(nullptr, &context, kind, value.c_str()));
  ASSERT_TRUE(extension);
  X509_add_ext(certificate, extension.get(), -1);
}

// A certificate for one day that is not signed yet.
Certificate unsignedCertificate(EVP_PKEY* key, const std::string& name, long serial) {
  Certificate certificate(X509_new());
  X509_set_version(certificate.get(), X509_VERSION_3);
  ASN1_INTEGER_set(X509_get_serialNumber(certificate.get()), serial);
  X509_gmtime_adj(X509_getm_notBefore(certificate.get()), -3600);
  X509_gmtime_adj(X509_getm_notAfter(certificate.get()), 86400);
  X509_set_pubkey(certificate.get(), key);
  X509_NAME_add_entry_by_txt(X509_get_subject_name(certificate.get()), "CN", MBSTRING_ASC,
                             reinterpret_cast<const unsigned char*>(name.c_str()), -1, -1, 0);
  return certificate;
}

std::string save(const std::string& file, X509* certificate) {
  const File out(std::fopen(file.c_str(), "w"));
  EXPECT_TRUE(out && PEM_write_X509(out.get(), certificate) == 1) << file;
  return file;
}

std::string save(const std::string& file, EVP_PKEY* key) {
  const File out(std::fopen(file.c_str(), "w"));
  EXPECT_TRUE(out && ::fchmod(::fileno(out.get()), 0600) == 0) << file;
  EXPECT_TRUE(out && PEM_write_PrivateKey(out.get(), key, nullptr, nullptr, 0, nullptr, nullptr))
      << file;
  return file;
}

}  // namespace

struct Authority::Signer {
  Key key{EVP_EC_gen("P-256")};
  Certificate certificate;
};

Authority::Authority(const std::string& directory, const std::string& name)
    : directory_(directory), signer_(std::make_unique<Signer>()) {
  EVP_PKEY* const key = signer_->key.get();
  signer_->certificate = unsignedCertificate(key, name, 1);
  X509* const certificate = signer_->certificate.get();
  X509_set_issuer_name(certificate, X509_get_subject_name(certificate));
  addExtension(certificate, certificate, NID_basic_constraints, "critical,CA:TRUE");
  EXPECT_GT(X509_sign(certificate, key, EVP_sha256()), 0);
  file_ = save(directory_ + "/" + name + ".pem", certificate);
}

Authority::~Authority() = default;

Authority::Pair Authority::sign(const std::string& name, const std::string& address) const {
  const Key key(EVP_EC_gen("P-256"));
  const Certificate certificate = unsignedCertificate(key.get(), name, 2);
  X509* const issuer = signer_->certificate.get();
  X509_set_issuer_name(certificate.get(), X509_get_subject_name(issuer));
  addExtension(certificate.get(), issuer, NID_subject_alt_name, "IP:" + address);
  EXPECT_GT(X509_sign(certificate.get(), signer_->key.get(), EVP_sha256()), 0);
  return {save(directory_ + "/" + name + ".pem", certificate.get()),
          save(directory_ + "/" + name + ".key", key.get())};
}
