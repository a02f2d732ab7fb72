// The messages as asn1c's generated code knows them: bytes to XML and XML to bytes. Its headers
// and ours name the same types, so they never meet in one source.
//
//   const Asn1cPeer peer("AsnAddiInfo");
//   EXPECT_EQ(peer.xmlOf(encoded(column)), element("AsnAddiInfo", xml(column)));
//
// Thread-safety: thread-compatible. Failures are std::runtime_error.
#pragma once

#include <string>

struct asn_TYPE_descriptor_s;

namespace emf::test {

class Asn1cPeer {
 public:
  // Of a message or a list of the exchange.
  explicit Asn1cPeer(const std::string& typeName);

  // Bytes that are one value and no more, as canonical XML, with the element around it.
  std::string xmlOf(const std::string& bytes) const;
  // The same, encoded again.
  std::string bytesOf(const std::string& bytes) const;
  // The value that the XML states, encoded.
  std::string bytesOfXml(const std::string& xml) const;

 private:
  asn_TYPE_descriptor_s* type_;
};

}  // namespace emf::test
