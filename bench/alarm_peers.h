// A reply frame of alarms as others read and write it: asn1c's generated code and OpenSSL's
// template decoder. Their headers stay out of the programs that compare them with ours.
//
//   Asn1cReply reply(bytes);       // decoded
//   reply.encode(buffer);
//
// Thread-safety: thread-compatible. Failures are std::runtime_error.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

struct OpensslReply_st;

class Asn1cReply {
 public:
  explicit Asn1cReply(const std::string& bytes);
  Asn1cReply(const Asn1cReply&) = delete;
  Asn1cReply& operator=(const Asn1cReply&) = delete;
  ~Asn1cReply();

  std::size_t items() const;
  // Into the buffer, which is large enough; the size.
  std::size_t encode(std::vector<unsigned char>& buffer) const;

 private:
  void* reply_ = nullptr;
};

class OpensslReply {
 public:
  explicit OpensslReply(const std::string& bytes);
  OpensslReply(const OpensslReply&) = delete;
  OpensslReply& operator=(const OpensslReply&) = delete;
  ~OpensslReply();

  std::size_t items() const;
  std::size_t encode(std::vector<unsigned char>& buffer) const;

 private:
  OpensslReply_st* reply_ = nullptr;
};
