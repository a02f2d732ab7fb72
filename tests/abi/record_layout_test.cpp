#include <cstddef>

#include "deviceinfo.h"
#include "emftoporecords.h"
#include "orma/log/log_service.h"
#include "orma/log/trace.h"
#include "ormaemfsvc.h"
#include "paginators.h"
#include "platform_test.h"
#include "processexception.h"
#include "record_fields.h"
#include "restquery.h"
#include "serviceifref.h"
#include "submapbufmgr.h"

namespace {

using Nimbola::MarkerPaginator;
using Nimbola::QueryIdPaginator;
using Nimbola::ResourceV3InstancesObjectsQuery;
using Nimbola::RestReq;
using Nimbola::SimpleCondition;
using Nimbola::SimpleExp;
using Nimbola::SimpleExpGroup;
using Nimbola::TsNodesQuery;

using emf::test::expectRecord;
using emf::test::kAfterTable;

TEST(RecordLayout, Device) {
  EXPECT_EQ(offsetof(Device, id), 8U);
  EXPECT_EQ(offsetof(Device, mainType), 16U);
  EXPECT_EQ(offsetof(Device, subType), 20U);
  EXPECT_EQ(offsetof(Device, ipAddress), 24U);
  EXPECT_EQ(offsetof(Device, name), 56U);
  EXPECT_EQ(sizeof(Device), 88U);
  static_assert(std::is_same_v<decltype(Device::id), std::int64_t>);
  static_assert(std::is_same_v<decltype(Device::mainType), std::int32_t>);
  static_assert(std::is_same_v<decltype(Device::subType), std::int32_t>);
}

// The fields are private; that there are these two and no table shows by the size.
TEST(RecordLayout, DeviceInfo) {
  struct Fields {
    std::map<long, Device> deviceMap;
    ACE_RW_Mutex rwLock;
  };
  EXPECT_EQ(sizeof(DeviceInfo), sizeof(Fields));
  static_assert(!std::is_polymorphic_v<DeviceInfo>);
}

// Private as well: what it adds to ACE's task shows by the size.
TEST(RecordLayout, SubnetLinkTask) {
  struct Fields : ACE_Task_Base {
    std::map<unsigned long, std::string> deviceLinks;
    std::map<std::string, std::string> subnetLinks;
    ACE_RW_Mutex lock;
    bool stop = false;
    bool refreshed = false;
  };
  EXPECT_EQ(sizeof(SubmapBufMgr), sizeof(Fields));
}

TEST(RecordLayout, ProcessException) {
  expectRecord("ProcessException", kAfterTable, sizeof(ProcessException),
               {FIELD(ProcessException, errCode), FIELD(ProcessException, line),
                FIELD(ProcessException, file), FIELD(ProcessException, function),
                FIELD(ProcessException, reserved), FIELD(ProcessException, detail)});
  EXPECT_EQ(offsetof(ProcessException, errCode), 8U);
  EXPECT_EQ(offsetof(ProcessException, line), 12U);
  EXPECT_EQ(sizeof(InterfaceNotExistException), sizeof(ProcessException));
}

TEST(RecordLayout, ServiceIFRef) {
  using Reference = ServiceIFRef<NS_LOG_SERVICE1::LogSvcInterface>;
  expectRecord("ServiceIFRef", 0, sizeof(Reference),
               {FIELD(Reference, buffer), FIELD(Reference, mutex), FIELD(Reference, bundleName),
                FIELD(Reference, serviceName), FIELD(Reference, nullInterface)});
}

TEST(RecordLayout, SourceRecord) {
  using NS_CORBA::SourceRecord;
  expectRecord(
      "SourceRecord", 0, sizeof(SourceRecord),
      {FIELD(SourceRecord, file), FIELD(SourceRecord, function), FIELD(SourceRecord, line)});
}

TEST(RecordLayout, ServiceObjectAddsNothingToItsBase) {
  EXPECT_EQ(sizeof(NS_ORMACORBA::ii_ormaiac_emf), sizeof(NS_BUNDLEMGR1::ServiceObjectBase));
}

TEST(RecordLayout, RestReq) {
  expectRecord("RestReq", 0, sizeof(RestReq),
               {FIELD(RestReq, target), FIELD(RestReq, url), FIELD(RestReq, body),
                FIELD(RestReq, params), FIELD(RestReq, extra), FIELD(RestReq, option),
                FIELD(RestReq, method), FIELD(RestReq, mode)});
  EXPECT_EQ(sizeof(RestReq::option), 8U);
  EXPECT_EQ(sizeof(RestReq::method), 4U);
  EXPECT_EQ(sizeof(RestReq::mode), 1U);
}

TEST(RecordLayout, FilterExpressions) {
  expectRecord("SimpleExp", 0, sizeof(SimpleExp),
               {FIELD(SimpleExp, name), FIELD(SimpleExp, value), FIELD(SimpleExp, op),
                FIELD(SimpleExp, caseSensitive)});
  EXPECT_EQ(sizeof(SimpleExp::op), 4U);
  EXPECT_EQ(sizeof(SimpleExp::caseSensitive), 1U);
  expectRecord("SimpleCondition", 0, sizeof(SimpleCondition),
               {FIELD(SimpleCondition, logOp), FIELD(SimpleCondition, exp)});
  expectRecord("SimpleExpGroup", 0, sizeof(SimpleExpGroup),
               {FIELD(SimpleExpGroup, logOp), FIELD(SimpleExpGroup, exps)});
  EXPECT_EQ(sizeof(Nimbola::SimpleConditions), sizeof(std::vector<SimpleCondition>));
}

TEST(RecordLayout, QueryBuilders) {
  using Query = ResourceV3InstancesObjectsQuery;
  expectRecord("ResourceV3InstancesObjectsQuery", 0, sizeof(Query),
               {FIELD(Query, contentSelector), FIELD(Query, logOp), FIELD(Query, simple),
                FIELD(Query, complexLogOp), FIELD(Query, complex)});
  expectRecord("TsNodesQuery", 0, sizeof(TsNodesQuery),
               {FIELD(TsNodesQuery, conditions), FIELD(TsNodesQuery, contentSelector)});
}

TEST(RecordLayout, Paginators) {
  expectRecord("MarkerPaginator", 0, sizeof(MarkerPaginator),
               {FIELD(MarkerPaginator, request), FIELD(MarkerPaginator, marker),
                FIELD(MarkerPaginator, listKey), FIELD(MarkerPaginator, limit),
                FIELD(MarkerPaginator, hasMore)});
  expectRecord("QueryIdPaginator", 0, sizeof(QueryIdPaginator),
               {FIELD(QueryIdPaginator, request), FIELD(QueryIdPaginator, hasMore),
                FIELD(QueryIdPaginator, queryId), FIELD(QueryIdPaginator, limit),
                FIELD(QueryIdPaginator, listKey)});
}

}  // namespace
