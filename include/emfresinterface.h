// Queries over the platform's resources: names, labels, contents, places and types.
//
//   std::list<ResourceDn> labels;
//   EMFResMgrI::getResourceLabels(labels, {{0, "NE=12,FR=1"}, {1, "NE=12,FR=1,S=2"}});
//   for (const ResourceDn& resource : labels) std::cout << resource.label << '\n';
//
// Every operation is class-level. All but AdpDevID2FDN, getResType, initAccessFdnConvertDll and
// getAccessNETypeList block: an exchange over REST for at most rest.totalTimeoutMs, a read of the
// database for at most database.statementTimeoutMs. Output lists are appended to, never cleared,
// unless told otherwise. A member of an answer that is of another JSON type than its field needs
// raises Json::LogicError; records before it stay appended.
//
// Thread-safety: thread-safe on distinct outputs; no state.
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
  // Replaces `fdn` by the FDN of a device id: "NE=", "ONE=", "EMS=" or "OS=" by the id's range, and
  // the id in decimal. Every id has a form. Returns the length of the text in bytes, or a negative
  // number (logged), with `fdn` as far as it got, when formatting failed or the thread could not
  // have its buffer: address space of 2 GB for the life of each thread that calls, of which one
  // page is used.
  static std::int32_t AdpDevID2FDN(std::uint32_t deviceId, std::string& fdn);

  // Does nothing and returns 0.
  static int getResType();

  // Appends label and type of each resource named in `dnMap`, whose keys number the names from 0
  // without a gap; a number that is missing is passed over. The answer is grouped by kind: ports,
  // cards, slots, frames, elements. Always 0: what could not be read, or does not exist, is left
  // out. For each kind there is a request for the first 100 names, the next 100, the next 200, the
  // next 400 and so on; none for a kind without names. An exception loses the records of the kind
  // that raised it.
  static std::int64_t getResourceLabels(std::list<ResourceDn>& out,
                                        const std::map<int, std::string>& dnMap);
  // The same.
  static std::int64_t getResourceLabelsEx(std::list<ResourceDn>& out,
                                          const std::map<int, std::string>& dnMap);

  // The same for names of one kind: "PORT", "CARD", "SLOT", "FRAME" or "NE". Any other word asks
  // for nothing and appends nothing. Always 0.
  static std::int64_t getResourceLabelsByRest(std::list<ResourceDn>& out,
                                              const std::vector<std::string>& fdns,
                                              const std::string& resType);
  // The same for ports: main type 6, sub type "portType". A port without one is left out.
  static std::int64_t getPortResourceLabelsByRest(std::list<ResourceDn>& out,
                                                  const std::vector<std::string>& fdns);
  // The same for slots: main type 4, sub type "cardType"; where "isDaughterCard" is true 5 and
  // "daughterCardType". A slot without "isDaughterCard" is left out.
  static std::int64_t getSlotResourceLabelsByRest(std::list<ResourceDn>& out,
                                                  const std::vector<std::string>& fdns);
  // The same for cards: as slots, but main types 20 and 21.
  static std::int64_t getCardResourceLabelsByRest(std::list<ResourceDn>& out,
                                                  const std::vector<std::string>& fdns);
  // The same for frames: main type 3, sub type the number that the text "frameType" begins with. A
  // frame without one is left out.
  static std::int64_t getFrameResourceLabelsByRest(std::list<ResourceDn>& out,
                                                   const std::vector<std::string>& fdns);
  // The same for network elements: main type 1, sub type "detailDevType". One without it is left
  // out.
  static std::int64_t getNEResourceLabelsByRest(std::list<ResourceDn>& out,
                                                const std::vector<std::string>& fdns);

  // Adds the label of every network element under its FDN; an FDN that is there keeps its label.
  // Always 0: a failed read adds nothing. Reads the whole device listing, one page after the other,
  // and holds it meanwhile.
  static std::int64_t getAllNeResLabel(std::map<std::string, std::string>& out);

  // Appends every network element, and puts one record for the management system at the front of
  // `out`. 0, or 0x411800BA when a page could not be read (logged): the elements of earlier pages
  // stay, without that record. One request for each 1000 elements; an element without a name
  // throws, as above.
  static std::int64_t getAllManagedElements(std::list<Resource>& out);

  // Appends what the network element of the first resource id contains of that main type, where its
  // path starts with `ids`. 0; 1 when `ids` is empty; -1 when a page could not be read, with the
  // resources of earlier pages appended. One request for each 1000 resources of the element,
  // whatever their type.
  static std::int64_t getContainedResourceByMainType(const std::vector<std::int64_t>& ids,
                                                     std::int64_t mainType,
                                                     std::list<Resource>& out);
  // The same for one exact type, wherever in the element: of `ids` the first alone counts.
  static std::int64_t getContainedResourceByType(const std::vector<std::int64_t>& ids,
                                                 ResTypeID type, std::list<Resource>& out);

  // Makes an instance of the access product's name conversion, from its library. 0; 1 when the
  // library or its function is missing (`instance` stays) or gave none (`instance` is null). The
  // caller owns the instance; the library is closed again.
  static std::int64_t initAccessFdnConvertDll(PRDU_ORMA::PrduResInfoConvert*& instance);

  // Writes the label of each record: of frames and of daughter cards from one request for each of
  // the two, which answers at most 1000, of cards and ports from the FDN alone. What could not be
  // read (logged), and every other kind (logged), keeps the label it came with; after an exception
  // every record does. Always 0.
  static std::int64_t getAccessResourceLabels(std::map<int, ResourceEightLoc>& locs);

  // Where the element with that compatible id stands, from one request. 0, or -1 with `info`
  // untouched when the read failed (logged) or the answer holds no location. Of `info` the four
  // texts are replaced together.
  static std::int64_t getResourceLocation(std::int64_t iid, LocationInfo_& info);

  // Appends who keeps the element with that compatible id, from one request: the first keeper
  // alone, and of an empty list one empty record. 0, or -1 with nothing appended when the read
  // failed (logged) or the answer holds no list.
  static std::int64_t getResourceMaintenances(std::int64_t iid, std::list<MaintenanceInfo>& out);

  // Appends the stored attributes of the resource with that compatible id, cut to 32 bits, from the
  // database; those numbered 30 and 60 to 63 are left out. 0, or -1 with nothing appended when the
  // read failed or there is no such resource.
  static std::int64_t getResourceAttributes(std::int64_t iid, std::list<ResourceAttribute>& out);

  // Appends the main resource types, one request for each 200. 0, or -1 with nothing appended when
  // a page could not be read; an exception appends nothing either.
  static std::int64_t getResMainType(std::list<NbiResMainType>& out);

  // Replaces `types` by the device types that count as access network elements, each with the text
  // "ACCESS", from the installation's "devicetype.cfg", which is read at every call: of its first
  // line of the key ACCESS. Of the types 1 to 85 the key is 268389720 more than the type. A line of
  // more than 510 bytes is traced and passed over. Always 0; without an installation root or a file
  // that can be read, `types` stays as it was.
  static std::int64_t getAccessNETypeList(std::map<int, std::string>& types);
};
