// Certificates made on the spot: an authority, and what it signs for a service and a client.
#pragma once

#include <memory>
#include <string>

class Authority {
 public:
  // Files are written below `directory`.
  Authority(const std::string& directory, const std::string& name);
  Authority(const Authority&) = delete;
  Authority& operator=(const Authority&) = delete;
  ~Authority();

  // The authority's own certificate (PEM file).
  const std::string& file() const { return file_; }

  struct Pair {
    std::string certificate;
    std::string key;
  };
  // Signs a certificate for `address`, an IP address, and returns it with its key (PEM files).
  Pair sign(const std::string& name, const std::string& address) const;

 private:
  struct Signer;
  std::string directory_;
  std::string file_;
  std::unique_ptr<Signer> signer_;
};
