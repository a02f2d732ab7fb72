// Messages against asn1c's generated code, in the tagging mode that this program is built for.
#include <gtest/gtest.h>

#include "asn1c_peer.h"
#include "message_walk.h"

namespace emf::test {
namespace {

constexpr AsnTagging kTagging = EMF_PEER_TAGGING;

template <typename Message>
class Asn1c : public ::testing::Test {
 protected:
  // Ours to theirs as a value and as bytes, theirs to ours.
  static void expectAgreement(const Message& message) {
    static const Asn1cPeer peer(Message().typeName());
    const std::string bytes = encoded(message, kTagging);
    const std::string text = element(message.typeName(), xml(message));
    ASSERT_EQ(peer.xmlOf(bytes), text);
    ASSERT_EQ(toHex(peer.bytesOf(bytes)), toHex(bytes));
    const std::string theirs = peer.bytesOfXml(text);
    ASSERT_EQ(toHex(theirs), toHex(bytes));
    Message read;
    EXPECT_EQ(decode(read, theirs, kTagging), theirs.size());
    ASSERT_EQ(xml(read), xml(message));
  }
};

using Types =
    ::testing::Types<AsnOtherToSvrQryAlmEventReq, AsnSvrToOtherQryResp,
                     AsnSvrToOtherQryRespResultStrc, AsnDistinguishedResource, AsnRelation,
                     AsnAlmQryExtendCondition, AsnAddiInfo, AsnoFMSDateTimeStrc, AsnAlmKeyStrc,
                     ASNULList, ASNUCList, AsnResDNList, AsnAlmQryExtendConditionSeqOf,
                     AsnSvrToOtherQryRespResultStrcSeqOf, AsnOtherToSvrQryAlmEventReqSeqOf1,
                     AsnDistinguishedResourceSeqOf, AsnAlmKeyList, AsnLstAlmQryExtendCondition,
                     AsnOtherToSvrQryAlmEventReqSeqOf, AsnSvrToOtherQryRespResultList>;
TYPED_TEST_SUITE(Asn1c, Types, );

TYPED_TEST(Asn1c, AgreesOnRandomValues) {
  Randomness random(31);
  for (int i = 0; i < 150 && !this->HasFatalFailure(); ++i) {
    TypeParam message;
    fill(message, random);
    this->expectAgreement(message);
  }
}

template <typename Message>
class Asn1cOptional : public Asn1c<Message> {};

using MessagesWithOptionalFields =
    ::testing::Types<AsnOtherToSvrQryAlmEventReq, AsnSvrToOtherQryRespResultStrc,
                     AsnDistinguishedResource>;
TYPED_TEST_SUITE(Asn1cOptional, MessagesWithOptionalFields, );

TYPED_TEST(Asn1cOptional, AgreesOnEveryCombination) {
  TypeParam probe;
  const int optionals = setPresent(probe, 0);
  EXPECT_GE(optionals, 6);
  for (unsigned present = 0; present < 1U << optionals && !this->HasFatalFailure(); ++present) {
    TypeParam message;
    setPresent(message, present);
    this->expectAgreement(message);
  }
}

}  // namespace
}  // namespace emf::test
