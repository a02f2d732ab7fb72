#include <openssl/asn1t.h>

#include <stdexcept>

#include "alarm_peers.h"

namespace {

struct DateTime {
  int32_t year, month, day, hour, minute, second;
};

struct Column {
  ASN1_OCTET_STRING* name;
  int32_t type;
  ASN1_OCTET_STRING* value;
};

struct Item {
  int32_t serialNo, devSerialNo, nodeType, devId, devType, faultId, severity, functionType;
  int32_t eventType;
  ASN1_OCTET_STRING* name;
  int32_t reasonId;
  ASN1_OCTET_STRING *reason, *repair, *meaning;
  ASN1_INTEGER* faultFlag;  // an optional number has no embedded form
  DateTime* faultTime;
  DateTime* ackTime;
  DateTime* clearTime;
  int32_t neZone;
  ASN1_OCTET_STRING* ackUserName;
  ASN1_OCTET_STRING* location;
  ASN1_OCTET_STRING* fdn;
  ASN1_OCTET_STRING *para, *detail;
  STACK_OF(Column) * columns;
  int32_t rootCause;
};

}  // namespace

struct OpensslReply_st {
  int32_t errorCode, frameTotal, frameNo;
  STACK_OF(Item) * items;
};

namespace {

// Templates, as OpenSSL's macros make them: C, with C's habits.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wpedantic"
#pragma GCC diagnostic ignored "-Wunused-function"

// clang-format off
ASN1_SEQUENCE(DateTime) = {
  ASN1_EMBED(DateTime, year, INT32),
  ASN1_EMBED(DateTime, month, INT32),
  ASN1_EMBED(DateTime, day, INT32),
  ASN1_EMBED(DateTime, hour, INT32),
  ASN1_EMBED(DateTime, minute, INT32),
  ASN1_EMBED(DateTime, second, INT32),
} static_ASN1_SEQUENCE_END(DateTime)

ASN1_SEQUENCE(Column) = {
  ASN1_SIMPLE(Column, name, ASN1_OCTET_STRING),
  ASN1_EMBED(Column, type, INT32),
  ASN1_SIMPLE(Column, value, ASN1_OCTET_STRING),
} static_ASN1_SEQUENCE_END(Column)

ASN1_SEQUENCE(Item) = {
  ASN1_EMBED(Item, serialNo, INT32),
  ASN1_EMBED(Item, devSerialNo, INT32),
  ASN1_EMBED(Item, nodeType, INT32),
  ASN1_EMBED(Item, devId, INT32),
  ASN1_EMBED(Item, devType, INT32),
  ASN1_EMBED(Item, faultId, INT32),
  ASN1_EMBED(Item, severity, INT32),
  ASN1_EMBED(Item, functionType, INT32),
  ASN1_EMBED(Item, eventType, INT32),
  ASN1_SIMPLE(Item, name, ASN1_OCTET_STRING),
  ASN1_EMBED(Item, reasonId, INT32),
  ASN1_SIMPLE(Item, reason, ASN1_OCTET_STRING),
  ASN1_SIMPLE(Item, repair, ASN1_OCTET_STRING),
  ASN1_SIMPLE(Item, meaning, ASN1_OCTET_STRING),
  ASN1_IMP_OPT(Item, faultFlag, ASN1_INTEGER, 0),
  ASN1_SIMPLE(Item, faultTime, DateTime),
  ASN1_IMP_OPT(Item, ackTime, DateTime, 1),
  ASN1_IMP_OPT(Item, clearTime, DateTime, 2),
  ASN1_EMBED(Item, neZone, INT32),
  ASN1_IMP_OPT(Item, ackUserName, ASN1_OCTET_STRING, 3),
  ASN1_SIMPLE(Item, location, ASN1_OCTET_STRING),
  ASN1_IMP_OPT(Item, fdn, ASN1_OCTET_STRING, 5),
  ASN1_SIMPLE(Item, para, ASN1_OCTET_STRING),
  ASN1_SIMPLE(Item, detail, ASN1_OCTET_STRING),
  ASN1_IMP_SEQUENCE_OF_OPT(Item, columns, Column, 4),
  ASN1_EMBED(Item, rootCause, INT32),
} static_ASN1_SEQUENCE_END(Item)

using Reply = OpensslReply_st;
ASN1_SEQUENCE(Reply) = {
  ASN1_EMBED(Reply, errorCode, INT32),
  ASN1_EMBED(Reply, frameTotal, INT32),
  ASN1_EMBED(Reply, frameNo, INT32),
  ASN1_SEQUENCE_OF(Reply, items, Item),
} static_ASN1_SEQUENCE_END(Reply)
// clang-format on

#pragma GCC diagnostic pop

}  // namespace

OpensslReply::OpensslReply(const std::string& bytes) {
  const auto* at = reinterpret_cast<const unsigned char*>(bytes.data());
  reply_ = reinterpret_cast<OpensslReply_st*>(
      ASN1_item_d2i(nullptr, &at, static_cast<long>(bytes.size()), ASN1_ITEM_rptr(Reply)));
  if (reply_ == nullptr) throw std::runtime_error("OpenSSL cannot read the frame");
}

OpensslReply::~OpensslReply() {
  ASN1_item_free(reinterpret_cast<ASN1_VALUE*>(reply_), ASN1_ITEM_rptr(Reply));
}

std::size_t OpensslReply::items() const {
  return static_cast<std::size_t>(
      OPENSSL_sk_num(reinterpret_cast<const OPENSSL_STACK*>(reply_->items)));
}

std::size_t OpensslReply::encode(std::vector<unsigned char>& buffer) const {
  unsigned char* at = buffer.data();
  const int size =
      ASN1_item_i2d(reinterpret_cast<const ASN1_VALUE*>(reply_), &at, ASN1_ITEM_rptr(Reply));
  if (size < 0) throw std::runtime_error("OpenSSL cannot write the frame");
  return static_cast<std::size_t>(size);
}
