#include "faultquery.h"

#include <ctime>
#include <utility>

#include "emfalminterface.h"
#include "emfglobal.h"
#include "faultmessages.h"
#include "orma/channel/asn_phy_cmd.h"
#include "processfailure.h"
#include "watchedcall.h"

namespace {

using Item = AsnSvrToOtherQryRespResultStrc;

constexpr char kSourceName[] = "emfalminterface";

constexpr std::int64_t kSuccess = 0;
constexpr int kNoSuchCommand = -1;

constexpr std::uint32_t kFaultServer = 56;
constexpr int kTimeoutSeconds = 300;
constexpr unsigned char kFlowControl = 1;
constexpr unsigned short kPriority = 0;

constexpr int kNoTime = -1;  // in each field of a time that limits nothing
constexpr std::int32_t kDelivered = 1;

constexpr int kFirstYear = 1900;  // of std::tm
constexpr int kFirstMonth = 1;    // of the reply

template <class Number>
struct NumberField {
  Number FaultRecord::*to;
  AsnInt Item::*from;
};

constexpr NumberField<std::int64_t> kWideNumbers[] = {
    {&FaultRecord::devSerialNo, &Item::ulDevSerialNo},
    {&FaultRecord::nodeType, &Item::ulNodeType},
};

constexpr NumberField<std::int32_t> kNumbers[] = {
    {&FaultRecord::devType, &Item::ucDevType},
    {&FaultRecord::eventType, &Item::ucEventType},
    {&FaultRecord::functionType, &Item::ucFunctionType},
    {&FaultRecord::severity, &Item::ucSeverity},
    {&FaultRecord::faultId, &Item::ulFaultID},
    {&FaultRecord::reasonId, &Item::ulReasonID},
};

// Meant as it stands: the year counts from 1900 and the month from 0, unlike in a reply.
void write(AsnoFMSDateTimeStrc& to, const std::tm& time) {
  to.sYear = time.tm_year;
  to.cMonth = time.tm_mon;
  to.cDay = time.tm_mday;
  to.cHour = time.tm_hour;
  to.cMinute = time.tm_min;
  to.cSecond = time.tm_sec;
}

std::tm noTime() {
  std::tm time{};
  time.tm_year = time.tm_mon = time.tm_mday = kNoTime;
  time.tm_hour = time.tm_min = time.tm_sec = kNoTime;
  return time;
}

std::tm timeBefore(unsigned int seconds) {
  const std::time_t start = std::time(nullptr) - std::time_t{seconds};
  std::tm time{};
  ::gmtime_r(&start, &time);
  return time;
}

void fillRequest(AsnOtherToSvrQryAlmEventReq& request, const std::tm& begin) {
  write(*request.occurBeginTm, begin);
  write(*request.occurEndTm, noTime());
  request.ucTypeFlag = 1;
  request.strPara.ReSet("");
}

std::tm timeOf(const AsnoFMSDateTimeStrc& from) {
  std::tm time{};  // tm_gmtoff and tm_zone as well
  time.tm_year = from.sYear - kFirstYear;
  time.tm_mon = from.cMonth - kFirstMonth;
  time.tm_mday = from.cDay;
  time.tm_hour = from.cHour;
  time.tm_min = from.cMinute;
  time.tm_sec = from.cSecond;
  time.tm_wday = time.tm_yday = time.tm_isdst = -1;
  return time;
}

// Texts end at their first zero byte.
void fillRecord(const Item& item, FaultRecord& record) {
  for (const auto& field : kWideNumbers) record.*field.to = int{item.*field.from};
  for (const auto& field : kNumbers) record.*field.to = item.*field.from;
  record.faultTime = timeOf(*item.faultTime);
  if (item.strFdn) record.fdn = item.strFdn->bytes().data();
  record.para = item.strPara.bytes().data();
  record.faultFlag = kDelivered;
}

// Up to the first node without an item.
void appendRecords(const AsnSvrToOtherQryRespResultList& items, std::list<FaultRecord>& out) {
  for (items.toFirst(); const Item* item = items.current(); items.toNext()) {
    FaultRecord record;
    fillRecord(*item, record);
    out.push_back(std::move(record));
  }
}

// Codes of the channel and of the server are wider; what is reported is their lower half.
void throwIfFailed(unsigned long errorCode, int line) {
  if (errorCode == 0) return;
  emf::throwProcessException(static_cast<int>(errorCode), kSourceName, line, "");
}

void receiveRecords(CAsnPhyCmd& command, AsnSvrToOtherQryResp& reply, std::list<FaultRecord>& out) {
  unsigned long errorCode = 0;
  while (command.Receive(errorCode, reply)) {
    TraceAsn(kSourceName, emf::kUnknownFunction, __LINE__, reply);
    throwIfFailed(errorCode, __LINE__);
    errorCode = static_cast<unsigned long>(long{reply.ulErrorCode});
    throwIfFailed(errorCode, __LINE__);
    appendRecords(reply.lstItem, out);
    if (reply.ulFrameNo < reply.ulFrameTotal) command.NeedNextRsp();
    reply.lstItem.clear();
  }
  throwIfFailed(errorCode, __LINE__);
}

}  // namespace

std::int64_t queryFaultRecords(std::list<FaultRecord>& out, unsigned long command,
                               unsigned int seconds) {
  AsnOtherToSvrQryAlmEventReq request;
  if (command == kQueryEventsSince) {
    fillRequest(request, timeBefore(seconds));
  } else if (command == kQueryCurrentAlarms) {
    fillRequest(request, noTime());
  } else {
    emf::throwProcessException(kNoSuchCommand, kSourceName, __LINE__, "");
  }
  TraceAsn(kSourceName, emf::kUnknownFunction, __LINE__, request);
  CProcID faultServer;
  faultServer.process = kFaultServer;
  AsnSvrToOtherQryResp reply;  // outlives the command, as the request does
  CAsnPhyCmd exchange(command, request, faultServer, kTimeoutSeconds, kFlowControl, kPriority);
  exchange.Send(nullptr);  // a failure is what the first Receive tells
  receiveRecords(exchange, reply, out);
  return kSuccess;
}

std::int64_t EMFAlarmI::getAllAlarms(std::list<FaultRecord>& out) {
  emf::WatchedCall call("EMFAlarmI::getAllAlarms");
  return call.result(queryFaultRecords(out, kQueryCurrentAlarms, 0));
}

// Asks for the current alarms, not for events since then: meant so.
std::int64_t EMFAlarmI::getAllEvents(std::list<FaultRecord>& out, unsigned int seconds) {
  emf::WatchedCall call("EMFAlarmI::getAllEvents");
  return call.result(queryFaultRecords(out, kQueryCurrentAlarms, seconds));
}
