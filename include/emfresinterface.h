// Queries over the platform's resources: names, labels, contents, places and types.
//
//   std::list<ResourceDn> labels;
//   EMFResMgrI::getResourceLabels(labels, {{0, "NE=12,FR=1"}, {1, "NE=12,FR=1,S=2"}});
//   for (const ResourceDn& resource : labels) std::cout << resource.label << '\n';
//
// Every operation is class-level. All but AdpDevID2FDN, getResType, initAccessFdnConvertDll and
// getAccessNETypeList block in REST or database calls. Output lists are appended to, never cleared,
// unless told otherwise. A member of an answer that is of another JSON type than its field needs
// raises Json::LogicError; records before it stay appended.
//
// Thread-safety: thread-safe; no state.
#pragma once

#include <cstdint>
#include <list>
#include <map>
#include <string>
#include <vector>

#include "emfexport.h"
#include "emfresrecords.h"

namespace PRDU_ORMA {
class PrduResInfoConvert;
}

class EMF_API EMFResMgrI {
 public:
  // The FDN of a device id: "NE=", "ONE=", "EMS=" or "OS=" by the id's range, and the id in
  // decimal. Replaces `fdn`. Returns the length of the text, or a negative number when formatting
  // failed. Every id has a form.
  static std::int32_t AdpDevID2FDN(std::uint32_t deviceId, std::string& fdn);

  // Does nothing and returns 0.
  static int getResType();

  // Label and type of each resource named in `dnMap`, whose keys number the names from 0 without a
  // gap; a number that is missing is passed over. The answer is grouped by kind: ports, cards,
  // slots, frames, elements. Always 0: what could not be read, or does not exist, is left out. For
  // each kind there is a request for the first 100 names, the next 100, the next 200, the next 400
  // and so on; none for a kind without names.
  static std::int64_t getResourceLabels(std::list<ResourceDn>& out,
                                        const std::map<int, std::string>& dnMap);
  // The same.
  static std::int64_t getResourceLabelsEx(std::list<ResourceDn>& out,
                                          const std::map<int, std::string>& dnMap);

  // The same for names of one kind: "PORT", "CARD", "SLOT", "FRAME" or "NE". Any other word gives
  // nothing. Always 0.
  static std::int64_t getResourceLabelsByRest(std::list<ResourceDn>& out,
                                              const std::vector<std::string>& fdns,
                                              const std::string& resType);
  static std::int64_t getPortResourceLabelsByRest(std::list<ResourceDn>& out,
                                                  const std::vector<std::string>& fdns);
  static std::int64_t getSlotResourceLabelsByRest(std::list<ResourceDn>& out,
                                                  const std::vector<std::string>& fdns);
  static std::int64_t getCardResourceLabelsByRest(std::list<ResourceDn>& out,
                                                  const std::vector<std::string>& fdns);
  static std::int64_t getFrameResourceLabelsByRest(std::list<ResourceDn>& out,
                                                   const std::vector<std::string>& fdns);
  static std::int64_t getNEResourceLabelsByRest(std::list<ResourceDn>& out,
                                                const std::vector<std::string>& fdns);

  // Adds the label of every network element under its FDN; an FDN that is there keeps its label.
  // Always 0: a failed read adds nothing. Reads the whole device listing, one page after the other,
  // and holds it meanwhile.
  static std::int64_t getAllNeResLabel(std::map<std::string, std::string>& out);

  // Every network element, and at the front of `out` one record for the management system. 0, or
  // 0x411800BA when a page could not be read: the elements of earlier pages stay, without that
  // record. One request for each 1000 elements; an element without a name throws, as above.
  static std::int64_t getAllManagedElements(std::list<Resource>& out);

  // What the network element of the first id contains: all of a main type whose path starts with
  // `ids`, or all of one exact type, wherever in the element. 0; 1 when `ids` is empty; -1 when a
  // page could not be read, with the resources of earlier pages appended. One request for each 1000
  // resources of the element, whatever their type.
  static std::int64_t getContainedResourceByMainType(const std::vector<std::int64_t>& ids,
                                                     std::int64_t mainType,
                                                     std::list<Resource>& out);
  static std::int64_t getContainedResourceByType(const std::vector<std::int64_t>& ids,
                                                 ResTypeID type, std::list<Resource>& out);

  // Makes an instance of the access product's name conversion, from its library. 0; 1 when the
  // library or its function is missing (`instance` stays) or gave none (`instance` is null). The
  // caller owns the instance; the library is closed again.
  static std::int64_t initAccessFdnConvertDll(PRDU_ORMA::PrduResInfoConvert*& instance);

  // Writes the label of each record: of frames and daughter cards over REST, at most 1000 of each
  // kind, of cards and ports from the FDN alone. What could not be read, and every other kind,
  // keeps the label it came with. Always 0.
  static std::int64_t getAccessResourceLabels(std::map<int, ResourceEightLoc>& locs);

  // Where the element with that compatible id stands, from one request. 0, or -1 with `info`
  // untouched when the read failed or the answer holds no location. Of `info` the four texts are
  // replaced together.
  static std::int64_t getResourceLocation(std::int64_t iid, LocationInfo_& info);

  // Appends who keeps the element, from one request: the first keeper alone, and of an empty list
  // one empty record. 0, or -1 with nothing appended when the read failed or the answer holds no
  // list.
  static std::int64_t getResourceMaintenances(std::int64_t iid, std::list<MaintenanceInfo>& out);

  // Appends the stored attributes of a resource, from the database; `iid` is cut to 32 bits. 0, or
  // -1 when the read failed or there is no such resource.
  static std::int64_t getResourceAttributes(std::int64_t iid, std::list<ResourceAttribute>& out);

  // Appends the main resource types, read in pages of 200. 0, or -1 with nothing appended when a
  // page could not be read.
  static std::int64_t getResMainType(std::list<NbiResMainType>& out);

  // Replaces `types` by the device types that count as access network elements, each with the text
  // "ACCESS", from the installation's "devicetype.cfg", which is read at every call: of its first
  // line of the key ACCESS. A line of more than 510 bytes is traced and passed over. Always 0;
  // without an installation root or a file that can be read, `types` stays as it was.
  static std::int64_t getAccessNETypeList(std::map<int, std::string>& types);
};
