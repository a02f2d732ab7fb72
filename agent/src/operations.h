// The functions behind the commands: most call one operation of the plug-in and give its result
// and its records, of a list also those that came before a failure.
//
// Thread-safety: thread-safe, as the operations are. They block as the operations do and let their
// exceptions pass; topoDraw throws HostFailure besides.
#pragma once

#include "answer.h"
#include "arguments.h"

namespace ormaagent {

Answer topoDevices(const Arguments& arguments);
Answer topoDevice(const Arguments& arguments);
Answer topoVersion(const Arguments& arguments);
Answer topoLocation(const Arguments& arguments);
Answer topoDeviceOfNode(const Arguments& arguments);
Answer topoNodes(const Arguments& arguments);
Answer topoNode(const Arguments& arguments);
Answer topoRootSubMaps(const Arguments& arguments);
Answer topoSubMaps(const Arguments& arguments);
Answer topoSubMap(const Arguments& arguments);
Answer topoSubMapName(const Arguments& arguments);
Answer topoLinks(const Arguments& arguments);
Answer topoLink(const Arguments& arguments);
Answer topoTree(const Arguments& arguments);
Answer topoDraw(const Arguments& arguments);
// Throws HostFailure when the statement could not be run.
Answer dbQuery(const Arguments& arguments);
Answer alarmCurrent(const Arguments& arguments);
Answer alarmEvents(const Arguments& arguments);
Answer alarmDefinitions(const Arguments& arguments);
Answer alarmReasons(const Arguments& arguments);
Answer alarmRedefined(const Arguments& arguments);
Answer cacheDevice(const Arguments& arguments);
Answer cacheName(const Arguments& arguments);
Answer resFdn(const Arguments& arguments);
Answer resLabels(const Arguments& arguments);  // throws HostFailure without names
Answer resNeLabels(const Arguments& arguments);
Answer resElements(const Arguments& arguments);
Answer resContained(const Arguments& arguments);
Answer resTree(const Arguments& arguments);
Answer resAccessLabels(const Arguments& arguments);
Answer resLocation(const Arguments& arguments);
Answer resMaintenance(const Arguments& arguments);
Answer resAttributes(const Arguments& arguments);
Answer resMainTypes(const Arguments& arguments);
Answer resAccessTypes(const Arguments& arguments);
// Throws ServiceMissing when no service offers error texts.
Answer errorText(const Arguments& arguments);

}  // namespace ormaagent
