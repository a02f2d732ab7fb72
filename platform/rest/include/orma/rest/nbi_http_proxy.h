// Ready-made queries of the platform's northbound services. Paging stays behind their face.
//
// Thread-safety: thread-safe; every operation blocks in REST exchanges.
#pragma once

#include <json/value.h>

#include <string>
#include <vector>

#include "orma/bundle/export.h"

namespace NS_UTIL {

class ORMA_API NBIHTTPProxy {
 public:
  // Appends one JSON object for each resource of the network, each with "nativeId", "typeId",
  // "ipAddress" and "name". True when every page came. On failure (logged) nothing is appended
  // and the result is false, so that half a network is never taken for the whole.
  static bool GetAllDevProperty(std::vector<Json::Value>& out);

  // One page of the topology view objects that match `filter`: POST of
  //   {"condition": {"filter": <filter>}, "limit": 1000, "marker": "<marker>"}
  // to /rest/topology/v3/subnet-view, with "marker" only when it is not empty, which asks for the
  // first page. True when `response` holds the answer,
  //   {"dataList": [<object>, ...], "hasNext": true|false, "marker": "<marker of the next page>"};
  // otherwise `response` is null, and the failure is logged.
  static bool getTopoSubnetViewInfo(const Json::Value& filter, std::string marker,
                                    Json::Value& response);

  // The properties of the resources of one kind that have these FDNs, in one exchange without
  // paging: POST of {"nativeIds": [<FDN>, ...]} to /rest/resource/v2/<kind>-properties, with <kind>
  // "port", "slot", "card", "frame" or "ne". True when `answer` holds the answer,
  //   {"objList": [<object>, ...]};
  // otherwise it is null, and the failure is logged. FDNs that name nothing are left out of the
  // answer. Every object has "name" and
  //   port   "nativeId", "portType" (number)
  //   slot   "slotNativeId", "isDaughterCard", "cardType" or "daughterCardType" (number)
  //   card   "nativeId", "isDaughterCard", "cardType" or "daughterCardType" (number)
  //   frame  "nativeId", "frameType" (a number's text)
  //   ne     "nativeId", "detailDevType" (number)
  static bool GetPortResourcePropertyByFDNs(Json::Value& answer,
                                            const std::vector<std::string>& fdns);
  static bool GetSlotResourcePropertyByFDNs(Json::Value& answer,
                                            const std::vector<std::string>& fdns);
  static bool GetCardResourcePropertyByFDNs(Json::Value& answer,
                                            const std::vector<std::string>& fdns);
  static bool GetFrameResourcePropertyByFDNs(Json::Value& answer,
                                             const std::vector<std::string>& fdns);
  static bool GetNEResourcePropertyByFDNs(Json::Value& answer,
                                          const std::vector<std::string>& fdns);

  // Posts a query document, given as JSON text, to a path of the resource service. True when
  // `answer` holds the answer; otherwise it is null, and the failure is logged. A body that is no
  // JSON is such a failure and sends nothing.
  static bool GetAcessResource(Json::Value& answer, const std::string& path,
                               const std::string& body);

  // Where resources stand and who keeps them: POST of `body`, the JSON text of
  //   {"nativeIds": [<FDN>, ...], "needMaintenanceInfo": true|false},
  // to /rest/resource/v2/location-maintenance. The result is as above; the answer is
  //   {"locationInfo": [{"nativeId", "devMTInfo": {"country", "province", "city", "address"}}],
  //    "maintenanceInfo": [{"iID", "name", "dept", "phoneNo", "email"}]},
  // every value a text, "maintenanceInfo" only where it was asked for.
  static bool QueryLocalInfoAndMaintenInfo(Json::Value& answer, const std::string& body);

  // One page of the alarm definitions, or of the alarm reasons: `body` is the JSON text of
  //   {"limit": <count>, "offset": <first, from 0>}.
  // The result is as above; the answer is
  //   {"totalCount": <of the whole catalogue>, "definitions": [<object>, ...]},
  // of reasons too. A definition has the texts "alarmId", "alarmGroupId", "alarmName" and
  // "description" and the numbers "eventType" and "severity"; a reason the texts "alarmGroupId",
  // "alarmId", "causes" and "repairAction" and the number "reasonId".
  static bool QueryAlarmDefinitionInfo(Json::Value& answer, const std::string& body);
  static bool QueryAlarmReasonInfo(Json::Value& answer, const std::string& body);

  // The alarms whose severity was redefined: `body` is as above, but "offset" counts from 1. The
  // result is as above; the answer is an object with "count", a number, and one member for each
  // row, named by the row's index in decimal:
  //   {"count": 1, "0": {"alarmGroupId", "alarmId", "newSeverity", "OldLevel", "Name"}},
  // with both ids and the name texts and both severities numbers. "count" is that of the rows
  // that are there.
  static bool QueryRedefineAlarmDataList(Json::Value& answer, const std::string& body);
};

}  // namespace NS_UTIL
