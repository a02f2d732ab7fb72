// The messages of a query to the fault server: the request, the reply frame and what they hold.
// docs/formats/alarm_exchange.asn1 states them for the other side.
//
// Thread-safety, failure and the way a message is described: asnmessage.h and asnlist.h.
//
//   AsnOtherToSvrQryAlmEventReq request;
//   request.ucTypeFlag = 1;
//   request.occurBeginTm->sYear = -1;
//   request.lstSeverity.make().add() = 2;
#pragma once

#include <tuple>

#include "asnlist.h"
#include "asnmessage.h"

namespace emf::listnames {

inline constexpr char kASNUCList[] = "ASNUCList";
inline constexpr char kAsnAlmKeyList[] = "AsnAlmKeyList";
inline constexpr char kAsnResDNList[] = "AsnResDNList";
inline constexpr char kAsnDistinguishedResourceSeqOf[] = "AsnDistinguishedResourceSeqOf";
inline constexpr char kAsnOtherToSvrQryAlmEventReqSeqOf[] = "AsnOtherToSvrQryAlmEventReqSeqOf";
inline constexpr char kAsnAlmQryExtendConditionSeqOf[] = "AsnAlmQryExtendConditionSeqOf";
inline constexpr char kAsnLstAlmQryExtendCondition[] = "AsnLstAlmQryExtendCondition";
inline constexpr char kASNULList[] = "ASNULList";
inline constexpr char kAsnOtherToSvrQryAlmEventReqSeqOf1[] = "AsnOtherToSvrQryAlmEventReqSeqOf1";
inline constexpr char kAsnSvrToOtherQryRespResultStrcSeqOf[] =
    "AsnSvrToOtherQryRespResultStrcSeqOf";
inline constexpr char kAsnSvrToOtherQryRespResultList[] = "AsnSvrToOtherQryRespResultList";

}  // namespace emf::listnames

using ASNUCList = AsnNamedSeqOf<AsnInt, emf::listnames::kASNUCList>;

// The key of an alarm.
struct AsnAlmKeyStrcFields : AsnSequence {
  static constexpr char kName[] = "AsnAlmKeyStrc";

  AsnInt cDevType;
  AsnInt sAlmID;

  static constexpr auto fields() {
    using Self = AsnAlmKeyStrcFields;
    return std::tuple(EMF_FIELD(Self, cDevType), EMF_FIELD(Self, sAlmID));
  }
};
using AsnAlmKeyStrc = emf::AsnMessage<AsnAlmKeyStrcFields>;

using AsnAlmKeyList = AsnNamedSeqOf<AsnAlmKeyStrc, emf::listnames::kAsnAlmKeyList>;

// A date and time.
struct AsnoFMSDateTimeStrcFields : AsnSequence {
  static constexpr char kName[] = "AsnoFMSDateTimeStrc";

  AsnInt sYear;
  AsnInt cMonth;
  AsnInt cDay;
  AsnInt cHour;
  AsnInt cMinute;
  AsnInt cSecond;

  static constexpr auto fields() {
    using Self = AsnoFMSDateTimeStrcFields;
    return std::tuple(EMF_FIELD(Self, sYear), EMF_FIELD(Self, cMonth), EMF_FIELD(Self, cDay),
                      EMF_FIELD(Self, cHour), EMF_FIELD(Self, cMinute), EMF_FIELD(Self, cSecond));
  }
};
using AsnoFMSDateTimeStrc = emf::AsnMessage<AsnoFMSDateTimeStrcFields>;

using AsnResDNList = AsnNamedSeqOf<AsnOcts, emf::listnames::kAsnResDNList>;

struct AsnRelationFields : AsnSequence {
  static constexpr char kName[] = "AsnRelation";

  AsnInt iRelation;
  AsnInt iDepend;
  AsnResDNList aResDN;

  static constexpr auto fields() {
    using Self = AsnRelationFields;
    return std::tuple(EMF_FIELD(Self, iRelation), EMF_FIELD(Self, iDepend),
                      EMF_FIELD(Self, aResDN));
  }
};
using AsnRelation = emf::AsnMessage<AsnRelationFields>;

using AsnDistinguishedResourceSeqOf =
    AsnNamedSeqOf<AsnRelation, emf::listnames::kAsnDistinguishedResourceSeqOf>;

// One resource in a query.
struct AsnDistinguishedResourceFields : AsnSequence {
  static constexpr char kName[] = "AsnDistinguishedResource";

  AsnOcts resDN;
  emf::OptionalField<AsnOcts, 0> label;
  emf::OptionalField<AsnInt, 1> maintype;
  emf::OptionalField<AsnInt, 2> subtype;
  emf::OptionalField<AsnInt, 3> iResNumber;
  emf::OptionalField<AsnOcts, 4> wholeLabel;
  emf::OptionalField<AsnDistinguishedResourceSeqOf, 5> aResRelation;

  static constexpr auto fields() {
    using Self = AsnDistinguishedResourceFields;
    return std::tuple(EMF_FIELD(Self, resDN), EMF_FIELD(Self, label), EMF_FIELD(Self, maintype),
                      EMF_FIELD(Self, subtype), EMF_FIELD(Self, iResNumber),
                      EMF_FIELD(Self, wholeLabel), EMF_FIELD(Self, aResRelation));
  }
};
using AsnDistinguishedResource = emf::AsnMessage<AsnDistinguishedResourceFields>;

using AsnOtherToSvrQryAlmEventReqSeqOf =
    AsnNamedSeqOf<AsnDistinguishedResource, emf::listnames::kAsnOtherToSvrQryAlmEventReqSeqOf>;

using AsnAlmQryExtendConditionSeqOf =
    AsnNamedSeqOf<AsnOcts, emf::listnames::kAsnAlmQryExtendConditionSeqOf>;

// One extended query condition. "ucIsNotFalg" is spelled so on purpose: it is matched by its text.
struct AsnAlmQryExtendConditionFields : AsnSequence {
  static constexpr char kName[] = "AsnAlmQryExtendCondition";

  AsnOcts strExtFieldName;
  AsnAlmQryExtendConditionSeqOf lstStrExtFieldValue;
  AsnInt ucExtFieldType;
  AsnInt ucIsNotFalg;
  AsnInt ucCompareType;

  static constexpr auto fields() {
    using Self = AsnAlmQryExtendConditionFields;
    return std::tuple(EMF_FIELD(Self, strExtFieldName), EMF_FIELD(Self, lstStrExtFieldValue),
                      EMF_FIELD(Self, ucExtFieldType), EMF_FIELD(Self, ucIsNotFalg),
                      EMF_FIELD(Self, ucCompareType));
  }
};
using AsnAlmQryExtendCondition = emf::AsnMessage<AsnAlmQryExtendConditionFields>;

using AsnLstAlmQryExtendCondition =
    AsnNamedSeqOf<AsnAlmQryExtendCondition, emf::listnames::kAsnLstAlmQryExtendCondition>;

using ASNULList = AsnNamedSeqOf<AsnInt, emf::listnames::kASNULList>;

// One additional column.
struct AsnAddiInfoFields : AsnSequence {
  static constexpr char kName[] = "AsnAddiInfo";

  AsnOcts columnName;
  AsnInt type;
  AsnOcts value;

  static constexpr auto fields() {
    using Self = AsnAddiInfoFields;
    return std::tuple(EMF_FIELD(Self, columnName), EMF_FIELD(Self, type), EMF_FIELD(Self, value));
  }
};
using AsnAddiInfo = emf::AsnMessage<AsnAddiInfoFields>;

using AsnOtherToSvrQryAlmEventReqSeqOf1 =
    AsnNamedSeqOf<AsnAddiInfo, emf::listnames::kAsnOtherToSvrQryAlmEventReqSeqOf1>;

// The query request of commands 2157 and 2158.
struct AsnOtherToSvrQryAlmEventReqFields : AsnSequence {
  static constexpr char kName[] = "AsnOtherToSvrQryAlmEventReq";

  AsnInt ucTypeFlag;
  emf::OptionalField<ASNUCList, 0> lstSeverity;
  emf::OptionalField<ASNUCList, 1> lstFunctionType;
  emf::OptionalField<ASNUCList, 2> lstEventType;
  emf::OptionalField<ASNUCList, 3> lstStatus;
  emf::OptionalField<AsnAlmKeyList, 4> lstFaultID;
  emf::RequiredField<AsnoFMSDateTimeStrc> occurBeginTm;
  emf::RequiredField<AsnoFMSDateTimeStrc> occurEndTm;
  emf::OptionalField<AsnoFMSDateTimeStrc, 5> recoverBeginTm;
  emf::OptionalField<AsnoFMSDateTimeStrc, 6> recoverEndTm;
  AsnOtherToSvrQryAlmEventReqSeqOf lstTopoOID;
  AsnOcts strPara;
  emf::OptionalField<AsnLstAlmQryExtendCondition, 7> asnExtQryCon;
  emf::OptionalField<AsnInt, 8> rCorflag;
  emf::OptionalField<AsnInt, 9> resTypeFlag;
  emf::OptionalField<ASNULList, 10> lstSerialNo;
  emf::OptionalField<AsnOtherToSvrQryAlmEventReqSeqOf1, 11> addiInfoList;

  static constexpr auto fields() {
    using Self = AsnOtherToSvrQryAlmEventReqFields;
    return std::tuple(
        EMF_FIELD(Self, ucTypeFlag), EMF_FIELD(Self, lstSeverity), EMF_FIELD(Self, lstFunctionType),
        EMF_FIELD(Self, lstEventType), EMF_FIELD(Self, lstStatus), EMF_FIELD(Self, lstFaultID),
        EMF_FIELD(Self, occurBeginTm), EMF_FIELD(Self, occurEndTm), EMF_FIELD(Self, recoverBeginTm),
        EMF_FIELD(Self, recoverEndTm), EMF_FIELD(Self, lstTopoOID), EMF_FIELD(Self, strPara),
        EMF_FIELD(Self, asnExtQryCon), EMF_FIELD(Self, rCorflag), EMF_FIELD(Self, resTypeFlag),
        EMF_FIELD(Self, lstSerialNo), EMF_FIELD(Self, addiInfoList));
  }
};
using AsnOtherToSvrQryAlmEventReq = emf::AsnMessage<AsnOtherToSvrQryAlmEventReqFields>;

using AsnSvrToOtherQryRespResultStrcSeqOf =
    AsnNamedSeqOf<AsnAddiInfo, emf::listnames::kAsnSvrToOtherQryRespResultStrcSeqOf>;

// One alarm in a reply. The context tags do not follow the order of the fields: meant so.
struct AsnSvrToOtherQryRespResultStrcFields : AsnSequence {
  static constexpr char kName[] = "AsnSvrToOtherQryRespResultStrc";

  AsnInt ulSerialNo;
  AsnInt ulDevSerialNo;
  AsnInt ulNodeType;
  AsnInt ulDevID;
  AsnInt ucDevType;
  AsnInt ulFaultID;
  AsnInt ucSeverity;
  AsnInt ucFunctionType;
  AsnInt ucEventType;
  AsnOcts strName;
  AsnInt ulReasonID;
  AsnOcts strReason;
  AsnOcts strRepair;
  AsnOcts strMeaning;
  emf::OptionalField<AsnInt, 0> ucFaultFlag;
  emf::RequiredField<AsnoFMSDateTimeStrc> faultTime;
  emf::OptionalField<AsnoFMSDateTimeStrc, 1> ackTime;
  emf::OptionalField<AsnoFMSDateTimeStrc, 2> clearTime;
  AsnInt neZone;
  emf::OptionalField<AsnOcts, 3> strAckUserName;
  AsnOcts strLocation;
  emf::OptionalField<AsnOcts, 5> strFdn;
  AsnOcts strPara;
  AsnOcts strDetail;
  emf::OptionalField<AsnSvrToOtherQryRespResultStrcSeqOf, 4> addiInfoList;
  AsnInt rootCauseAlarmIndication;

  static constexpr auto fields() {
    using Self = AsnSvrToOtherQryRespResultStrcFields;
    return std::tuple(
        EMF_FIELD(Self, ulSerialNo), EMF_FIELD(Self, ulDevSerialNo), EMF_FIELD(Self, ulNodeType),
        EMF_FIELD(Self, ulDevID), EMF_FIELD(Self, ucDevType), EMF_FIELD(Self, ulFaultID),
        EMF_FIELD(Self, ucSeverity), EMF_FIELD(Self, ucFunctionType), EMF_FIELD(Self, ucEventType),
        EMF_FIELD(Self, strName), EMF_FIELD(Self, ulReasonID), EMF_FIELD(Self, strReason),
        EMF_FIELD(Self, strRepair), EMF_FIELD(Self, strMeaning), EMF_FIELD(Self, ucFaultFlag),
        EMF_FIELD(Self, faultTime), EMF_FIELD(Self, ackTime), EMF_FIELD(Self, clearTime),
        EMF_FIELD(Self, neZone), EMF_FIELD(Self, strAckUserName), EMF_FIELD(Self, strLocation),
        EMF_FIELD(Self, strFdn), EMF_FIELD(Self, strPara), EMF_FIELD(Self, strDetail),
        EMF_FIELD(Self, addiInfoList), EMF_FIELD(Self, rootCauseAlarmIndication));
  }
};
using AsnSvrToOtherQryRespResultStrc = emf::AsnMessage<AsnSvrToOtherQryRespResultStrcFields>;

using AsnSvrToOtherQryRespResultList =
    AsnNamedSeqOf<AsnSvrToOtherQryRespResultStrc, emf::listnames::kAsnSvrToOtherQryRespResultList>;

// One reply frame.
struct AsnSvrToOtherQryRespFields : AsnSequence {
  static constexpr char kName[] = "AsnSvrToOtherQryResp";

  AsnInt ulErrorCode;
  AsnInt ulFrameTotal;
  AsnInt ulFrameNo;
  AsnSvrToOtherQryRespResultList lstItem;

  static constexpr auto fields() {
    using Self = AsnSvrToOtherQryRespFields;
    return std::tuple(EMF_FIELD(Self, ulErrorCode), EMF_FIELD(Self, ulFrameTotal),
                      EMF_FIELD(Self, ulFrameNo), EMF_FIELD(Self, lstItem));
  }
};
using AsnSvrToOtherQryResp = emf::AsnMessage<AsnSvrToOtherQryRespFields>;
