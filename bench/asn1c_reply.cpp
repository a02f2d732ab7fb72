#include <stdexcept>

#include "alarm_peers.h"

extern "C" {
#include <AsnSvrToOtherQryResp.h>
}

namespace {

asn_TYPE_descriptor_t& kType = asn_DEF_AsnSvrToOtherQryResp;

}  // namespace

Asn1cReply::Asn1cReply(const std::string& bytes) {
  const asn_dec_rval_t result = ber_decode(nullptr, &kType, &reply_, bytes.data(), bytes.size());
  if (result.code == RC_OK) return;
  kType.free_struct(&kType, reply_, 0);
  throw std::runtime_error("asn1c's code cannot read the frame");
}

Asn1cReply::~Asn1cReply() { kType.free_struct(&kType, reply_, 0); }

std::size_t Asn1cReply::items() const {
  return static_cast<std::size_t>(static_cast<AsnSvrToOtherQryResp_t*>(reply_)->lstItem.list.count);
}

std::size_t Asn1cReply::encode(std::vector<unsigned char>& buffer) const {
  const asn_enc_rval_t result = der_encode_to_buffer(&kType, reply_, buffer.data(), buffer.size());
  if (result.encoded < 0) throw std::runtime_error("asn1c's code cannot write the frame");
  return static_cast<std::size_t>(result.encoded);
}
