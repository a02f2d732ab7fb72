#include "asn1c_peer.h"

#include <asn_application.h>

#include <memory>
#include <stdexcept>

extern "C" {
extern asn_TYPE_descriptor_t asn_DEF_ASNUCList;
extern asn_TYPE_descriptor_t asn_DEF_ASNULList;
extern asn_TYPE_descriptor_t asn_DEF_AsnAddiInfo;
extern asn_TYPE_descriptor_t asn_DEF_AsnAlmKeyList;
extern asn_TYPE_descriptor_t asn_DEF_AsnAlmKeyStrc;
extern asn_TYPE_descriptor_t asn_DEF_AsnAlmQryExtendCondition;
extern asn_TYPE_descriptor_t asn_DEF_AsnAlmQryExtendConditionSeqOf;
extern asn_TYPE_descriptor_t asn_DEF_AsnDistinguishedResource;
extern asn_TYPE_descriptor_t asn_DEF_AsnDistinguishedResourceSeqOf;
extern asn_TYPE_descriptor_t asn_DEF_AsnLstAlmQryExtendCondition;
extern asn_TYPE_descriptor_t asn_DEF_AsnOtherToSvrQryAlmEventReq;
extern asn_TYPE_descriptor_t asn_DEF_AsnOtherToSvrQryAlmEventReqSeqOf;
extern asn_TYPE_descriptor_t asn_DEF_AsnOtherToSvrQryAlmEventReqSeqOf1;
extern asn_TYPE_descriptor_t asn_DEF_AsnRelation;
extern asn_TYPE_descriptor_t asn_DEF_AsnResDNList;
extern asn_TYPE_descriptor_t asn_DEF_AsnSvrToOtherQryResp;
extern asn_TYPE_descriptor_t asn_DEF_AsnSvrToOtherQryRespResultList;
extern asn_TYPE_descriptor_t asn_DEF_AsnSvrToOtherQryRespResultStrc;
extern asn_TYPE_descriptor_t asn_DEF_AsnSvrToOtherQryRespResultStrcSeqOf;
extern asn_TYPE_descriptor_t asn_DEF_AsnoFMSDateTimeStrc;
}

namespace emf::test {
namespace {

asn_TYPE_descriptor_t* const kTypes[] = {
    &asn_DEF_ASNUCList,
    &asn_DEF_ASNULList,
    &asn_DEF_AsnAddiInfo,
    &asn_DEF_AsnAlmKeyList,
    &asn_DEF_AsnAlmKeyStrc,
    &asn_DEF_AsnAlmQryExtendCondition,
    &asn_DEF_AsnAlmQryExtendConditionSeqOf,
    &asn_DEF_AsnDistinguishedResource,
    &asn_DEF_AsnDistinguishedResourceSeqOf,
    &asn_DEF_AsnLstAlmQryExtendCondition,
    &asn_DEF_AsnOtherToSvrQryAlmEventReq,
    &asn_DEF_AsnOtherToSvrQryAlmEventReqSeqOf,
    &asn_DEF_AsnOtherToSvrQryAlmEventReqSeqOf1,
    &asn_DEF_AsnRelation,
    &asn_DEF_AsnResDNList,
    &asn_DEF_AsnSvrToOtherQryResp,
    &asn_DEF_AsnSvrToOtherQryRespResultList,
    &asn_DEF_AsnSvrToOtherQryRespResultStrc,
    &asn_DEF_AsnSvrToOtherQryRespResultStrcSeqOf,
    &asn_DEF_AsnoFMSDateTimeStrc,
};

struct Free {
  asn_TYPE_descriptor_t* type;
  void operator()(void* value) const { type->free_struct(type, value, 0); }
};
using Value = std::unique_ptr<void, Free>;

int append(const void* bytes, std::size_t size, void* text) {
  static_cast<std::string*>(text)->append(static_cast<const char*>(bytes), size);
  return 0;
}

Value decoded(asn_TYPE_descriptor_t* type, const std::string& bytes) {
  void* value = nullptr;
  const asn_dec_rval_t result = ber_decode(nullptr, type, &value, bytes.data(), bytes.size());
  Value owned(value, Free{type});
  if (result.code != RC_OK || result.consumed != bytes.size()) {
    throw std::runtime_error("the peer cannot read the bytes");
  }
  return owned;
}

std::string bytesOfValue(asn_TYPE_descriptor_t* type, void* value) {
  std::string bytes;
  if (der_encode(type, value, append, &bytes).encoded < 0) {
    throw std::runtime_error("the peer cannot write bytes");
  }
  return bytes;
}

}  // namespace

Asn1cPeer::Asn1cPeer(const std::string& typeName) : type_(nullptr) {
  for (asn_TYPE_descriptor_t* type : kTypes) {
    if (typeName == type->name) type_ = type;
  }
  if (type_ == nullptr) throw std::runtime_error("the peer does not know " + typeName);
}

std::string Asn1cPeer::xmlOf(const std::string& bytes) const {
  std::string text;
  const Value value = decoded(type_, bytes);
  if (xer_encode(type_, value.get(), XER_F_CANONICAL, append, &text).encoded < 0) {
    throw std::runtime_error("the peer cannot write XML");
  }
  return text;
}

std::string Asn1cPeer::bytesOf(const std::string& bytes) const {
  return bytesOfValue(type_, decoded(type_, bytes).get());
}

std::string Asn1cPeer::bytesOfXml(const std::string& xml) const {
  void* value = nullptr;
  const asn_dec_rval_t result = xer_decode(nullptr, type_, &value, xml.data(), xml.size());
  const Value owned(value, Free{type_});
  if (result.code != RC_OK) throw std::runtime_error("the peer cannot read " + xml);
  return bytesOfValue(type_, value);
}

}  // namespace emf::test
