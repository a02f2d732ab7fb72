#include "outcome.h"

#include <json/value.h>

#include <memory>
#include <sstream>
#include <stdexcept>

#include "emfalmrecords.h"
#include "emfresrecords.h"
#include "emftoporecords.h"
#include "orma/asn1/csm_exception.h"
#include "processexception.h"

namespace emf::faults {
namespace {

template <typename First, typename... Rest>
std::string joined(const First& first, const Rest&... rest) {
  std::ostringstream text;
  text << first;
  ((text << '|' << rest), ...);
  return text.str();
}

}  // namespace

void PrintTo(const Outcome& outcome, std::ostream* out) {
  *out << "result " << outcome.result << ", " << outcome.records.size() << " records";
  for (const std::string& record : outcome.records) *out << "\n    " << record;
}

std::string text(const AlarmCfg& r) {
  return joined(r.alarmGroupId, r.alarmId, r.eventType, r.severity, r.oldSeverity, r.alarmName,
                r.description);
}

std::string text(const AlarmReason& r) {
  return joined(r.alarmGroupId, r.alarmId, r.reasonId, r.causes, r.repairAction);
}

std::string text(const Device& r) {
  return joined(r.id, r.mainType, r.subType, r.ipAddress, r.name);
}

std::string text(const FaultRecord& r) {
  return joined(r.devSerialNo, r.nodeType, r.devType, r.eventType, r.severity, r.functionType,
                r.faultId, r.reasonId, r.faultTime.tm_year, r.faultTime.tm_mon, r.faultTime.tm_mday,
                r.fdn, r.para, r.faultFlag);
}

std::string text(const LocationInfo_& r) {
  return joined(r.spareNumber, r.country, r.province, r.city, r.address);
}

std::string text(const MaintenanceInfo& r) {
  return joined(r.iID, r.name, r.dept, r.phoneNo, r.email, r.spareText);
}

std::string text(const NbiResMainType& r) { return joined(r.id, r.name); }

std::string text(const Node& r) {
  return joined(r.parentSubMapId, r.nodeId, r.deviceId, r.iconName, r.nodeType, r.label, r.ipAddr,
                r.procId, r.fixedCode, r.nodeKind, r.posX, r.posY, r.topoId, r.remark);
}

std::string text(const PhysicalLink& r) {
  return joined(r.linkId, r.linkName, r.linkAttribute, r.linkStatus, r.srcDeviceId, r.srcPortName,
                r.srcPortStatus, r.dstDeviceId, r.dstPortName, r.dstPortStatus);
}

std::string text(const Resource& r) {
  std::ostringstream path;
  for (const std::int64_t id : r.resIDs) path << '/' << id;
  return joined(path.str(), r.iid, r.name, r.type.resMainTypeID, r.type.resSubTypeID);
}

std::string text(const ResourceAttribute& r) { return joined(r.id, r.value); }

std::string text(const ResourceDn& r) {
  return joined(r.resDN, r.label, r.type.resMainTypeID, r.type.resSubTypeID);
}

std::string text(const ResourceEightLoc& r) { return joined(r.fdn, r.label); }

std::string text(const SubMap& r) {
  return joined(r.parentSubMapId, r.subMapId, r.mapType, r.label, r.iconName, r.topoClassId,
                r.procId, r.posX, r.posY);
}

std::string text(const std::string& r) { return r; }

std::string text(int r) { return std::to_string(r); }

std::string thrown() {
  try {
    throw;
  } catch (ProcessException& failure) {
    return "ProcessException " + std::to_string(failure.errCode);
  } catch (CSM_Exception* failure) {
    const std::unique_ptr<CSM_Exception> owned(failure);
    return "CSM_Exception";
  } catch (const Json::LogicError&) {
    return "Json::LogicError";
  } catch (const std::invalid_argument&) {
    return "std::invalid_argument";
  } catch (const std::out_of_range&) {
    return "std::out_of_range";
  } catch (const std::exception& failure) {
    return std::string("an exception: ") + failure.what();
  } catch (...) {
    return "something unknown";
  }
}

}  // namespace emf::faults
