// What the messages are agreed to be, field by field, stated apart from the code.
//
// Thread-safety: immutable.
#pragma once

#include <vector>

namespace emf::test {

constexpr short kNone = -1;

enum class Held { ByValue, Required, Optional };

struct FieldRow {
  const char* name;
  const char* type;
  short tag = kNone;
  Held held = Held::ByValue;
};

inline FieldRow optional(const char* name, const char* type, short tag) {
  return {name, type, tag, Held::Optional};
}
inline FieldRow required(const char* name, const char* type) {
  return {name, type, kNone, Held::Required};
}

inline const std::vector<FieldRow> kRequest = {
    {"ucTypeFlag", "AsnInt"},
    optional("lstSeverity", "ASNUCList", 0),
    optional("lstFunctionType", "ASNUCList", 1),
    optional("lstEventType", "ASNUCList", 2),
    optional("lstStatus", "ASNUCList", 3),
    optional("lstFaultID", "AsnAlmKeyList", 4),
    required("occurBeginTm", "AsnoFMSDateTimeStrc"),
    required("occurEndTm", "AsnoFMSDateTimeStrc"),
    optional("recoverBeginTm", "AsnoFMSDateTimeStrc", 5),
    optional("recoverEndTm", "AsnoFMSDateTimeStrc", 6),
    {"lstTopoOID", "AsnOtherToSvrQryAlmEventReqSeqOf"},
    {"strPara", "AsnOcts"},
    optional("asnExtQryCon", "AsnLstAlmQryExtendCondition", 7),
    optional("rCorflag", "AsnInt", 8),
    optional("resTypeFlag", "AsnInt", 9),
    optional("lstSerialNo", "ASNULList", 10),
    optional("addiInfoList", "AsnOtherToSvrQryAlmEventReqSeqOf1", 11),
};

inline const std::vector<FieldRow> kReply = {
    {"ulErrorCode", "AsnInt"},
    {"ulFrameTotal", "AsnInt"},
    {"ulFrameNo", "AsnInt"},
    {"lstItem", "AsnSvrToOtherQryRespResultList"},
};

inline const std::vector<FieldRow> kItem = {
    {"ulSerialNo", "AsnInt"},
    {"ulDevSerialNo", "AsnInt"},
    {"ulNodeType", "AsnInt"},
    {"ulDevID", "AsnInt"},
    {"ucDevType", "AsnInt"},
    {"ulFaultID", "AsnInt"},
    {"ucSeverity", "AsnInt"},
    {"ucFunctionType", "AsnInt"},
    {"ucEventType", "AsnInt"},
    {"strName", "AsnOcts"},
    {"ulReasonID", "AsnInt"},
    {"strReason", "AsnOcts"},
    {"strRepair", "AsnOcts"},
    {"strMeaning", "AsnOcts"},
    optional("ucFaultFlag", "AsnInt", 0),
    required("faultTime", "AsnoFMSDateTimeStrc"),
    optional("ackTime", "AsnoFMSDateTimeStrc", 1),
    optional("clearTime", "AsnoFMSDateTimeStrc", 2),
    {"neZone", "AsnInt"},
    optional("strAckUserName", "AsnOcts", 3),
    {"strLocation", "AsnOcts"},
    optional("strFdn", "AsnOcts", 5),
    {"strPara", "AsnOcts"},
    {"strDetail", "AsnOcts"},
    optional("addiInfoList", "AsnSvrToOtherQryRespResultStrcSeqOf", 4),
    {"rootCauseAlarmIndication", "AsnInt"},
};

inline const std::vector<FieldRow> kResource = {
    {"resDN", "AsnOcts"},
    optional("label", "AsnOcts", 0),
    optional("maintype", "AsnInt", 1),
    optional("subtype", "AsnInt", 2),
    optional("iResNumber", "AsnInt", 3),
    optional("wholeLabel", "AsnOcts", 4),
    optional("aResRelation", "AsnDistinguishedResourceSeqOf", 5),
};

inline const std::vector<FieldRow> kRelation = {
    {"iRelation", "AsnInt"}, {"iDepend", "AsnInt"}, {"aResDN", "AsnResDNList"}};

inline const std::vector<FieldRow> kCondition = {
    {"strExtFieldName", "AsnOcts"}, {"lstStrExtFieldValue", "AsnAlmQryExtendConditionSeqOf"},
    {"ucExtFieldType", "AsnInt"},   {"ucIsNotFalg", "AsnInt"},
    {"ucCompareType", "AsnInt"},
};

inline const std::vector<FieldRow> kColumn = {
    {"columnName", "AsnOcts"}, {"type", "AsnInt"}, {"value", "AsnOcts"}};

inline const std::vector<FieldRow> kDateTime = {
    {"sYear", "AsnInt"}, {"cMonth", "AsnInt"},  {"cDay", "AsnInt"},
    {"cHour", "AsnInt"}, {"cMinute", "AsnInt"}, {"cSecond", "AsnInt"},
};

inline const std::vector<FieldRow> kAlarmKey = {{"cDevType", "AsnInt"}, {"sAlmID", "AsnInt"}};

}  // namespace emf::test
